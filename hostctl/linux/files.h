// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace HostLinux {

/// The machine's files below one root folder: "" for the machine itself, a folder with a small copy
/// of its tree for tests. All paths are absolute as the machine knows them. What cannot be read is
/// absent; nothing throws. Only ordinary files are read, so a pipe in a file's place blocks nobody.
class Files {
 public:
  explicit Files(std::string root = {}) : root_(std::move(root)) {}

  std::string Path(const std::string& path) const { return root_ + path; }
  bool Exists(const std::string& path) const;
  /// The whole file, of which at most a mebibyte is taken.
  std::optional<std::string> Read(const std::string& path) const;
  /// The file's text without the white space around it; empty when it cannot be read.
  std::string ReadLine(const std::string& path) const;
  /// The names in a folder, in natural order (eth2 before eth10).
  std::vector<std::string> List(const std::string& path) const;
  /// The last component of what a symbolic link points to; empty when `path` is no link.
  std::string LinkName(const std::string& path) const;
  /// Where `path` really lies, all links followed; empty when it does not exist.
  std::string RealPath(const std::string& path) const;

 private:
  std::string root_;
};

}  // namespace HostLinux
