// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>

namespace HostSample {

/// The record of everything that leaves the program, in order. Safe to use from any thread.
class Journal {
 public:
  /// Throws std::system_error, which names the file, when nothing can be appended there.
  explicit Journal(std::filesystem::path file);
  /// One line in one write. What cannot be written is lost: there is nowhere left to tell of it.
  void Append(std::string_view kind, std::string_view text) const;

 private:
  std::filesystem::path file_;
};

}  // namespace HostSample
