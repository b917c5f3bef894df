// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/whole_file.h"

namespace HostSample {

/// Holds the lock kept in the file at `path` until the end of its life; waits for it as long as it
/// takes. Like the functions below it throws std::system_error, whose text names the path.
class FileLock {
 public:
  explicit FileLock(const std::filesystem::path& path);

 private:
  HostCtl::Lib::Descriptor file_;
};

using HostCtl::Lib::readAll;
using HostCtl::Lib::readFile;

/// Writes a file that nobody reads yet; nothing waits for the disk.
void createFile(const std::filesystem::path& path, std::string_view content);

/// Puts `content` in the place of the file at `path`, which is at every moment the old or the new
/// one.
void replaceFile(const std::filesystem::path& path, std::string_view content);

/// The folder that the running program lies in.
std::filesystem::path programFolder();

}  // namespace HostSample
