// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "hostctl/lib/descriptor.h"

namespace HostCtl::Lib {

// Files that are read and written whole. Everything here throws std::system_error, whose text names
// the path.

/// Who may do what with a file; the numbers -1 leave the owner as it is.
struct FileAccess {
  mode_t mode = 0644;
  uid_t owner = static_cast<uid_t>(-1);
  gid_t group = static_cast<gid_t>(-1);
};

/// That of the file at `path`, or of the one that a link there points to.
FileAccess accessOf(const std::string& path);

/// Everything that is left to read of an open file.
std::string readAll(const Descriptor& file, const std::string& path);

/// The whole file at `path`.
std::string readFile(const std::string& path);

/// Puts `text` in the place of the file at `path`, which is at every moment the old or the new one;
/// the folders above it are made where they are missing. The text is on the disk when this returns,
/// and the old file is as it was when it throws.
void replaceFile(const std::string& path, std::string_view text, mode_t mode = 0644);

/// Whether a file has the name under which replaceFile writes beside the path, and leaves the file
/// where it is killed.
bool isHalfWritten(std::string_view name);

/// Does the same with a file that is written already, at `from` on the same disk.
void publishFile(const std::string& from, const std::string& path, const FileAccess& access);
inline void publishFile(const std::string& from, const std::string& path, mode_t mode) {
  publishFile(from, path, FileAccess{.mode = mode});
}

/// Writes `text` into the file at `path` itself, which is made where it is missing, for nobody but
/// its owner. Not at once: for files that nobody reads yet, and those that cannot be replaced.
void overwriteFile(const std::string& path, std::string_view text);

/// Gives an existing file another text and nothing else: access, links to it and mounts over it
/// stay. Written beside it first, under one fixed name, so that there is one caller at a time; in
/// place only where something is mounted.
void changeFile(const std::string& path, std::string_view text);
/// What changeFile has written beside `path` when it was cut off; removed by the next call too.
std::string besideOf(const std::string& path);

/// Has the names in a folder on the disk.
void syncFolder(const std::string& folder);

}  // namespace HostCtl::Lib
