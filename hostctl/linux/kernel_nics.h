// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "hostseam/driver.h"
#include "linux/network_tables.h"
#include "linux/networkd_report.h"

namespace HostLinux {

/// The kernel's tables as interfaces with their running configuration: every link but the loopback.
/// Who gave an address is judged by how it stands in the kernel: an IPv4 address that ends comes
/// from DHCP; an IPv6 address that ends, or from which the kernel makes temporary ones, is
/// advertised, or DHCP's when it is a single host's; what stays for ever is static; link-local is
/// nobody's. The interface's IPv4 address is the one of the widest scope that is no secondary;
/// without any, a link that asks for DHCP waits for its lease. The flag of the default route is set
/// for one interface only, the one with the best route (IPv4 before IPv6, then the smallest
/// metric).
std::vector<HostSeam::KernelNic> kernelNicsFrom(const NetworkTables& tables);

/// Puts what networkd says about who gave an address above the judgement of kernelNicsFrom.
void refine(HostSeam::KernelNic& nic, const std::vector<ReportedAddress>& reported);

/// The gateways of the best default routes.
HostSeam::RoutingRecord routingFrom(const std::vector<DefaultRoute>& routes);

}  // namespace HostLinux
