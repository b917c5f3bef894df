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

}  // namespace HostLinux
