// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hostseam/network.h"
#include "linux/files.h"
#include "linux/networkd_report.h"

namespace HostLinux {

/// The kernel's interfaces with their running configuration, refined by what networkd reported. For
/// one that has a file of ours the configured one is what stands there; for the others it is taken
/// to be the one that runs. Set up by Kiva is the interface that it made, else one whose IP
/// configuration stands in a file of ours. Whoever reads the switches adds
/// what they are connected to. Throws HostCtlException of `operation`.
std::vector<HostSeam::KernelNic> readKernelNics(const Files& files, const std::string& operation,
                                                const std::vector<ReportedAddress>& reported);

/// The one that carries management traffic, as the kernel and our files know it.
std::optional<HostSeam::KernelNic> readManagementNic(const Files& files,
                                                     const std::string& operation);

}  // namespace HostLinux
