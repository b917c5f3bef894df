// SPDX-License-Identifier: MIT
#pragma once

namespace HostLinux {

/// Puts the Linux machine that the program runs on under it: its real facts, files, log and
/// children.
void useLinuxHost();

}  // namespace HostLinux
