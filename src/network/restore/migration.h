// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostctl/network/nic.h"

namespace Kiva {

/// Moves a kernel NIC, with its addresses, to a port group of a standard switch. A usable agent of
/// the network overlay stands still meanwhile; a NIC on an opaque network is its tool's to hand
/// over. False leaves the NIC where the host left it: `trouble` says what went wrong, and is logged
/// already. That it is about to move is for the caller to log.
bool migrateNic(HostCtl::Network::TarnNic& nic, const std::string& switchName,
                const std::string& portGroup, std::string& trouble);

}  // namespace Kiva
