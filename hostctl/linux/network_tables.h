// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hostctl/network/address.h"

namespace HostLinux {

/// A link. What its configuration asks for, and whether IPv6 is on for it, the kernel's tables do
/// not tell; who knows adds it. `master` is the index of the bridge or bond that it is a port of,
/// or 0; `primary` is that of the port which a bond prefers. The hardware addresses are the one in
/// use and the adapter's own; each is empty where the link or the kernel has none.
struct LinkRow {
  int index = 0;
  std::string name;
  bool loopback = false;
  bool asksForDhcpv4 = false;
  bool up = false;
  bool carrier = false;
  int master = 0;
  int primary = 0;
  std::string address = {};
  std::string permanentAddress = {};
  bool ipv6 = false;
};

/// An address of an interface. `flags` are the kernel's IFA_F_*, `scope` its RT_SCOPE_* (smaller is
/// wider), `lifetime` the seconds that it stays valid, kForever without end.
struct AddressRow {
  int index = 0;
  HostCtl::Network::IpAddress address;
  int prefix = 0;
  std::uint32_t flags = 0;
  int scope = 0;
  std::uint32_t lifetime = 0;
};

inline constexpr std::uint32_t kForever = 0xffffffff;

/// A default route of the main table. The gateway is the empty address on a link without one, and
/// has its link for a zone where it is a link-local one.
struct DefaultRoute {
  int index = 0;
  HostCtl::Network::IpAddress gateway;
  std::uint32_t metric = 0;
};

/// The kernel's network tables, each in the kernel's own order.
struct NetworkTables {
  std::vector<LinkRow> links;
  std::vector<AddressRow> addresses;
  std::vector<DefaultRoute> defaultRoutes;
};

/// One dump of each table. A kernel that does not answer within 250 ms, or with an error, is an
/// HostCtlException of `operation`.
NetworkTables readNetworkTables(const std::string& operation);

/// The links alone.
std::vector<LinkRow> readLinks(const std::string& operation);

/// The default routes alone.
std::vector<DefaultRoute> readDefaultRoutes(const std::string& operation);

}  // namespace HostLinux
