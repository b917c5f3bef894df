// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace Harness {

/// A folder of its own, gone at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  ~TemporaryFolder();
  const std::filesystem::path& Path() const { return path_; }
  void Write(const std::string& name, const std::string& text) const;

 private:
  std::filesystem::path path_;
};

}  // namespace Harness
