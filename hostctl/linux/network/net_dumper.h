// SPDX-License-Identifier: MIT
#pragma once

#include "linux/files.h"

namespace HostLinux {

/// Disables the targets of netconsole, or unloads it where its options name them, and keeps crash
/// dumps that would go to another machine, by SSH, NFS or FTP, on this one. Nothing where there is
/// neither. Throws HostCtlException.
void disableNetDumper(const Files& files);

}  // namespace HostLinux
