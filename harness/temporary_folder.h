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
  /// Files within it, together with the folders above them; a leading slash stands for the folder.
  void Write(const std::string& name, const std::string& text) const;
  void Link(const std::string& name, const std::string& target) const;

 private:
  std::filesystem::path Place(const std::string& name) const;

  std::filesystem::path path_;
};

}  // namespace Harness
