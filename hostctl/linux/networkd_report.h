// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostctl/network/address.h"

namespace HostLinux {

/// An address that networkd configured, and where it got it from.
struct ReportedAddress {
  HostCtl::Network::IpAddress address;
  HostCtl::Network::AddressType type = HostCtl::Network::AddressType::Other;
  bool operator==(const ReportedAddress&) const = default;
};

/// The one function of the module kiva-networkd.so, found by this name. Fills `addresses` for all
/// interfaces and answers true, or says in `error` why it could not; it returns within a quarter of
/// a second and never starts a networkd that does not run.
inline constexpr const char* kNetworkdReportSymbol = "kivaNetworkdReport";
using NetworkdReportFunction = bool (*)(std::vector<ReportedAddress>& addresses,
                                        std::string& error);

}  // namespace HostLinux
