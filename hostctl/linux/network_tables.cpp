// SPDX-License-Identifier: MIT
#include "linux/network_tables.h"

#include <linux/if_addr.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "hostctl/lib/exception.h"
#include "linux/kernel_socket.h"
#include "linux/network/mac_address.h"

namespace HostLinux {

using HostCtl::Network::IpAddress;
using HostCtl::Network::Ipv4Address;
using HostCtl::Network::Ipv6Address;

namespace {

constexpr int kAttempts = 3;

template <int Most>
using Attributes = std::array<const nlattr*, Most + 1>;

template <int Most>
Attributes<Most> attributesOf(const nlmsghdr* message, unsigned header) {
  Attributes<Most> found{};
  const auto keep = [](const nlattr* one, void* into) {
    if (const auto type = mnl_attr_get_type(one); type <= Most)
      (*static_cast<Attributes<Most>*>(into))[type] = one;
    return MNL_CB_OK;
  };
  mnl_attr_parse(message, header, keep, &found);
  return found;
}

IpAddress emptyAddress(int family) {
  return family == AF_INET ? IpAddress(Ipv4Address()) : IpAddress(Ipv6Address());
}

IpAddress addressOf(int family, const nlattr* attribute) {
  if (!attribute) return emptyAddress(family);
  const auto* bytes = static_cast<const std::uint8_t*>(mnl_attr_get_payload(attribute));
  const std::size_t size = mnl_attr_get_payload_len(attribute);
  if (family == AF_INET && size == 4)
    return Ipv4Address(std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
                       std::uint32_t{bytes[2]} << 8 | bytes[3]);
  Ipv6Address::Bytes raw{};
  if (family != AF_INET6 || size != raw.size()) return emptyAddress(family);
  std::memcpy(raw.data(), bytes, raw.size());
  return Ipv6Address(raw);
}

std::uint32_t numberOf(const nlattr* attribute, std::uint32_t absent) {
  return attribute ? mnl_attr_get_u32(attribute) : absent;
}

std::string hardwareAddressOf(const nlattr* attribute) {
  MacAddress::Bytes bytes{};
  if (!attribute || mnl_attr_get_payload_len(attribute) != bytes.size()) return {};
  std::memcpy(bytes.data(), mnl_attr_get_payload(attribute), bytes.size());
  return MacAddress(bytes).ToString();
}

const nlattr* nested(const nlattr* in, int type) {
  if (!in) return nullptr;
  const nlattr* attr = nullptr;
  mnl_attr_for_each_payload(static_cast<const nlattr*>(mnl_attr_get_payload(in)),
                            mnl_attr_get_payload_len(in)) {
    if (mnl_attr_get_type(attr) == type) return attr;
  }
  return nullptr;
}

int primaryOf(const nlattr* info) {
  const nlattr* kind = nested(info, IFLA_INFO_KIND);
  if (!kind || std::string_view(mnl_attr_get_str(kind)) != "bond") return 0;
  return static_cast<int>(numberOf(nested(nested(info, IFLA_INFO_DATA), IFLA_BOND_PRIMARY), 0));
}

int takeLink(const nlmsghdr* message, void* into) {
  const auto* header = static_cast<const ifinfomsg*>(mnl_nlmsg_get_payload(message));
  const auto attributes = attributesOf<IFLA_PERM_ADDRESS>(message, sizeof *header);
  if (!attributes[IFLA_IFNAME]) return MNL_CB_OK;
  LinkRow link{header->ifi_index, mnl_attr_get_str(attributes[IFLA_IFNAME]),
               (header->ifi_flags & IFF_LOOPBACK) != 0, false};
  link.up = (header->ifi_flags & IFF_UP) != 0;
  link.carrier = link.up && attributes[IFLA_CARRIER] && mnl_attr_get_u8(attributes[IFLA_CARRIER]);
  link.master = static_cast<int>(numberOf(attributes[IFLA_MASTER], 0));
  link.primary = primaryOf(attributes[IFLA_LINKINFO]);
  link.address = hardwareAddressOf(attributes[IFLA_ADDRESS]);
  link.permanentAddress = hardwareAddressOf(attributes[IFLA_PERM_ADDRESS]);
  static_cast<NetworkTables*>(into)->links.push_back(std::move(link));
  return MNL_CB_OK;
}

int takeAddress(const nlmsghdr* message, void* into) {
  const auto* header = static_cast<const ifaddrmsg*>(mnl_nlmsg_get_payload(message));
  if (header->ifa_family != AF_INET && header->ifa_family != AF_INET6) return MNL_CB_OK;
  const auto attributes = attributesOf<IFA_FLAGS>(message, sizeof *header);
  // On a link to one peer IFA_ADDRESS is the peer's.
  const nlattr* own = attributes[IFA_LOCAL] ? attributes[IFA_LOCAL] : attributes[IFA_ADDRESS];
  ifa_cacheinfo times{kForever, kForever, 0, 0};
  if (const nlattr* cache = attributes[IFA_CACHEINFO];
      cache && mnl_attr_get_payload_len(cache) >= sizeof times)
    std::memcpy(&times, mnl_attr_get_payload(cache), sizeof times);
  static_cast<NetworkTables*>(into)->addresses.push_back(
      {static_cast<int>(header->ifa_index), addressOf(header->ifa_family, own),
       header->ifa_prefixlen, numberOf(attributes[IFA_FLAGS], header->ifa_flags), header->ifa_scope,
       times.ifa_valid});
  return MNL_CB_OK;
}

// A route over several links is told by the first of them.
void takeNextHop(const nlattr* multipath, int family, DefaultRoute& route) {
  const auto* hop = static_cast<const rtnexthop*>(mnl_attr_get_payload(multipath));
  const std::size_t size = mnl_attr_get_payload_len(multipath);
  if (size < sizeof *hop || hop->rtnh_len < sizeof *hop || hop->rtnh_len > size) return;
  route.index = hop->rtnh_ifindex;
  const nlattr* attr = nullptr;
  mnl_attr_for_each_payload(reinterpret_cast<const nlattr*>(hop + 1), hop->rtnh_len - sizeof *hop) {
    if (mnl_attr_get_type(attr) == RTA_GATEWAY) route.gateway = addressOf(family, attr);
  }
}

IpAddress withZone(const IpAddress& gateway, int index) {
  const auto* address = std::get_if<Ipv6Address>(&gateway);
  char name[IF_NAMESIZE];
  if (!address || !address->IsLinkLocal()) return gateway;
  if (!if_indextoname(static_cast<unsigned>(index), name)) return gateway;
  return Ipv6Address(address->GetBytes(), name);
}

int takeRoute(const nlmsghdr* message, void* into) {
  const auto* header = static_cast<const rtmsg*>(mnl_nlmsg_get_payload(message));
  const bool known = header->rtm_family == AF_INET || header->rtm_family == AF_INET6;
  const bool isDefault = header->rtm_dst_len == 0 && header->rtm_type == RTN_UNICAST &&
                         header->rtm_table == RT_TABLE_MAIN;
  if (!known || !isDefault) return MNL_CB_OK;
  const auto attributes = attributesOf<RTA_MULTIPATH>(message, sizeof *header);
  DefaultRoute route{static_cast<int>(numberOf(attributes[RTA_OIF], 0)),
                     addressOf(header->rtm_family, attributes[RTA_GATEWAY]),
                     numberOf(attributes[RTA_PRIORITY], 0)};
  if (attributes[RTA_MULTIPATH]) takeNextHop(attributes[RTA_MULTIPATH], header->rtm_family, route);
  route.gateway = withZone(route.gateway, route.index);
  static_cast<NetworkTables*>(into)->defaultRoutes.push_back(route);
  return MNL_CB_OK;
}

[[noreturn]] void fail(const std::string& operation, const char* table) {
  throw HostCtl::Lib::HostCtlException(operation, table, std::strerror(errno));
}

struct Table {
  int type;
  const char* name;
  mnl_cb_t take;
};

constexpr Table kLinks{RTM_GETLINK, "links", takeLink};
constexpr Table kAddresses{RTM_GETADDR, "addresses", takeAddress};
constexpr Table kRoutes{RTM_GETROUTE, "routes", takeRoute};

// A table that changes while it is dumped (EINTR) is asked for anew, on a fresh socket, because the
// rest of the broken dump is still on its way.
NetworkTables dump(const std::string& operation, std::initializer_list<Table> tables) {
  for (int attempt = 1;; ++attempt) {
    NetworkTables result;
    const KernelSocket socket = openKernelSocket(operation);
    unsigned sequence = 0;
    const char* broken = nullptr;
    for (const Table& table : tables)
      if (!broken && requestDump(socket.get(), table.type, ++sequence, table.take, &result) < 0)
        broken = table.name;
    if (!broken) return result;
    if (errno != EINTR || attempt == kAttempts) fail(operation, broken);
  }
}

}  // namespace

NetworkTables readNetworkTables(const std::string& operation) {
  return dump(operation, {kLinks, kAddresses, kRoutes});
}

std::vector<LinkRow> readLinks(const std::string& operation) {
  return dump(operation, {kLinks}).links;
}

std::vector<DefaultRoute> readDefaultRoutes(const std::string& operation) {
  return dump(operation, {kRoutes}).defaultRoutes;
}

}  // namespace HostLinux
