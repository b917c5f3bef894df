// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace HostTools {

// The host's network as tables (tableText), read through the host-control library, so that what is
// configured can be compared with what runs, and a shell with the console. Each throws
// HostCtlException when the host cannot say.

/// Interface, setting, what is configured, what runs; an IPv6 address stands in one row for both.
std::string ipTable();
/// The default gateways.
std::string routeTable();
std::string dnsTable();
/// A row for each port group of a standard switch, and for a switch without any.
std::string switchTable();
/// The same for the ports of a distributed switch.
std::string distributedSwitchTable();
/// The physical adapters.
std::string adapterTable();

}  // namespace HostTools
