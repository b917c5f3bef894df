// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

#include "harness/screen.h"
#include "hostctl/lib/descriptor.h"

namespace Harness {

/// The two ends of a pseudo-terminal. Its owner keeps the program's end open too, so that what a
/// program wrote last can still be read after it has ended.
class Pty {
 public:
  explicit Pty(Size size);

  const std::filesystem::path& Path() const { return path_; }
  /// Gives the terminal another size, of which its foreground processes are told.
  void Resize(Size size);
  /// Types what the terminal takes now; returns how much that was.
  std::size_t Write(std::string_view bytes);
  /// What has been written by the program: whatever is there, or what comes within `limit`.
  std::string Read(std::chrono::milliseconds limit);
  /// The same, written as the program would.
  std::size_t WriteAsProgram(std::string_view bytes);
  bool HasTypeAhead() const;
  /// Takes the terminal away from whoever runs on it.
  void HangUp() { master_.Close(); }
  bool IsHungUp() const { return !master_; }

 private:
  HostCtl::Lib::Descriptor master_;
  std::filesystem::path path_;
  HostCtl::Lib::Descriptor slave_;
};

}  // namespace Harness
