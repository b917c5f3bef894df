// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "hostctl/system/records.h"
#include "linux/files.h"

namespace HostLinux {

/// The version record from an os-release text and the kernel's own two texts, as /proc/sys/kernel
/// shows them ("osrelease" and "version"). The build number is the operating system's numeric
/// BUILD_ID, else the kernel's: the number after "#".
HostCtl::System::VersionRecord versionFrom(std::string_view osRelease, std::string kernelRelease,
                                           std::string_view kernelVersion);

HostCtl::System::VersionRecord readVersion(const Files& files);

}  // namespace HostLinux
