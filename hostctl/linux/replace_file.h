// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace HostLinux {

/// Puts `text` in the place of the file at `path`, which is at every moment the old or the new one;
/// the folders above it are made where they are missing. The text is on the disk when this returns.
/// Throws std::system_error, whose text names the path, with the old file as it was.
void replaceFile(const std::string& path, std::string_view text, mode_t mode = 0644);

/// Does the same, but where `path` is a mount point, whose place nothing can take, the text is
/// written into the file that is there.
void replaceFileOrText(const std::string& path, std::string_view text);

/// Does what replaceFile does with a file that is written already, at `from` on the same disk.
void publishFile(const std::string& from, const std::string& path, mode_t mode);

/// Makes the folder where it is missing, for everybody to read whatever the umask.
void makeReadableFolder(const std::string& folder);

/// Has the names in a folder on the disk.
void syncFolder(const std::string& folder);

}  // namespace HostLinux
