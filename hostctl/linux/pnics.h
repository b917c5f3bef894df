// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "hostctl/network/nic.h"
#include "linux/files.h"

namespace HostLinux {

/// The kernel's names of the physical NICs, in natural order; the console calls them pnic0, pnic1,
/// ….
std::vector<std::string> physicalNics(const Files& files);
std::string pnicName(std::size_t index);

/// The physical NICs: the network interfaces that hang on a device, named pnic0, pnic1, … in the
/// order of the kernel's own names, which their descriptions begin with. A NIC without a link has
/// speed 0; its switch is the bridge that it is a port of.
std::vector<HostCtl::Network::PnicRecord> readPnics(const Files& files);

/// The bridge or bond that the kernel interface `name` is a port of, or an empty text.
std::string masterOf(const Files& files, const std::string& name);

/// The management interface of a host whose network Kiva set up.
inline constexpr const char* kManagementNic = "tarn0";

}  // namespace HostLinux
