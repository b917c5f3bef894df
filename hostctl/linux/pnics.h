// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "hostctl/network/nic.h"
#include "linux/files.h"

namespace HostLinux {

/// A physical NIC: a network interface that hangs on a device.
struct PhysicalNic {
  std::string pnic;    ///< what the console calls it: "pnic0"
  std::string kernel;  ///< "eth0"
};

/// Those that are there. Their numbers are positions among the kernel's names in natural order,
/// when a program first asks for them; from then on, until the machine starts anew, all programs
/// call a NIC that, however many come and go: a new one gets the next number, and that of one that
/// is gone is nobody's.
std::vector<PhysicalNic> physicalNics(const Files& files);
/// An adapter that is gone keeps the kernel's name.
std::string pnicNamed(const std::vector<PhysicalNic>& nics, const std::string& kernel);
/// The other way round; empty for an adapter that the machine does not have.
std::string kernelNamed(const std::vector<PhysicalNic>& nics, const std::string& pnic);

/// The physical NICs, in the order of their numbers; descriptions begin with the kernel's name. A
/// NIC without a link has speed 0; its switch is the bridge that it is a port of.
std::vector<HostCtl::Network::PnicRecord> readPnics(const Files& files);

/// What masterOf says of an interface that Open vSwitch has in the kernel, whatever its bridge.
inline constexpr const char* kOvsMaster = "ovs-system";

/// The bridge or bond that the kernel interface `name` is a port of, or an empty text.
std::string masterOf(const Files& files, const std::string& name);

/// The management interface of a host whose network Kiva set up.
inline constexpr const char* kManagementNic = "tarn0";

}  // namespace HostLinux
