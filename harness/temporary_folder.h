// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace Harness {

/// A folder of its own, gone at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(TemporaryFolder&& other) noexcept : path_(std::exchange(other.path_, {})) {}
  ~TemporaryFolder();
  const std::filesystem::path& Path() const { return path_; }
  void Write(const std::string& name, const std::string& text) const;

 private:
  std::filesystem::path path_;
};

}  // namespace Harness
