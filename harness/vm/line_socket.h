// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "hostctl/lib/descriptor.h"

namespace Harness {

/// A client of a local socket on which both sides write lines.
class LineSocket {
 public:
  using Milliseconds = std::chrono::milliseconds;

  /// Throws std::system_error where nobody answers.
  explicit LineSocket(const std::filesystem::path& path);

  void Send(std::string_view bytes) const;
  /// The next line without its end; none when it does not come within `limit` or the other side
  /// has gone.
  std::optional<std::string> ReadLine(Milliseconds limit);

 private:
  std::optional<std::string> TakeLine();

  HostCtl::Lib::Descriptor socket_;
  std::string read_;
};

}  // namespace Harness
