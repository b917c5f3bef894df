// SPDX-License-Identifier: MIT
#include "linux/network/interface_state.h"

#include <arpa/inet.h>
#include <linux/if_addr.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "hostctl/lib/exception.h"
#include "linux/kernel_socket.h"
#include "linux/network/link_control.h"
#include "linux/network/settle.h"
#include "linux/network/wait.h"
#include "linux/network_file.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

/// What the kernel says of a route and takes from nobody.
constexpr unsigned kStateOfLinks = RTNH_F_DEAD | RTNH_F_LINKDOWN;

constexpr int kAttempts = 3;
/// An IPv6 address is good for a route's source when nobody else has been found to have it.
constexpr std::chrono::seconds kBackWithin{4};

nlmsghdr* messageIn(KernelMessage& message) {
  return reinterpret_cast<nlmsghdr*>(message.data());
}
const nlmsghdr* messageIn(const KernelMessage& message) {
  return reinterpret_cast<const nlmsghdr*>(message.data());
}

int takeMessage(const nlmsghdr* message, void* into) {
  const auto* bytes = reinterpret_cast<const char*>(message);
  static_cast<std::vector<KernelMessage>*>(into)->emplace_back(bytes, bytes + message->nlmsg_len);
  return MNL_CB_OK;
}

std::vector<KernelMessage> tableOf(const std::string& operation, int type, const char* name) {
  for (int attempt = 1;; ++attempt) {
    std::vector<KernelMessage> messages;
    const KernelSocket socket = openKernelSocket(operation);
    if (requestDump(socket.get(), type, 1, takeMessage, &messages) >= 0) return messages;
    if (errno != EINTR || attempt == kAttempts)
      throw HostCtlException(operation, name, std::strerror(errno));
  }
}

template <class Header>
Header* headerOf(KernelMessage& message) {
  return static_cast<Header*>(mnl_nlmsg_get_payload(messageIn(message)));
}
template <class Header>
const Header* headerOf(const KernelMessage& message) {
  return static_cast<const Header*>(mnl_nlmsg_get_payload(messageIn(message)));
}

const nlattr* attributeOf(const KernelMessage& message, int type) {
  const nlattr* attr = nullptr;
  const auto* first =
      static_cast<const nlattr*>(mnl_nlmsg_get_payload_offset(messageIn(message), sizeof(rtmsg)));
  const std::size_t size = mnl_nlmsg_get_payload_len(messageIn(message));
  mnl_attr_for_each_payload(first, size - std::min(size, MNL_ALIGN(sizeof(rtmsg)))) {
    if (mnl_attr_get_type(attr) == type) return attr;
  }
  return nullptr;
}

std::uint32_t numberIn(const KernelMessage& route, int type) {
  const nlattr* attribute = attributeOf(route, type);
  return attribute ? mnl_attr_get_u32(attribute) : 0;
}

/// The kernel makes temporary IPv6 addresses by itself; for IPv4 the flag means another thing.
bool isAddressToKeep(const KernelMessage& message, int index) {
  const auto* header = headerOf<ifaddrmsg>(message);
  const bool temporary =
      header->ifa_family == AF_INET6 && (header->ifa_flags & IFA_F_TEMPORARY) != 0;
  return header->ifa_index == static_cast<unsigned>(index) && !temporary;
}

/// Every place in a route that names its link, with the flags beside it where it is that of one of
/// several next hops.
template <class Action>
void forEachLink(KernelMessage& route, const Action& action) {
  unsigned char none = 0;
  if (const nlattr* link = attributeOf(route, RTA_OIF))
    action(*static_cast<int*>(mnl_attr_get_payload(link)), none);
  const nlattr* several = attributeOf(route, RTA_MULTIPATH);
  if (!several) return;
  auto* at = static_cast<char*>(mnl_attr_get_payload(several));
  for (auto left = std::size_t{mnl_attr_get_payload_len(several)}; left >= sizeof(rtnexthop);) {
    auto* hop = reinterpret_cast<rtnexthop*>(at);
    if (hop->rtnh_len < sizeof *hop || hop->rtnh_len > left) return;
    action(hop->rtnh_ifindex, hop->rtnh_flags);
    const std::size_t size = std::min<std::size_t>(RTNH_ALIGN(hop->rtnh_len), left);
    at += size;
    left -= size;
  }
}

bool isRouteToKeep(KernelMessage& message, int index) {
  const auto* header = headerOf<rtmsg>(message);
  const bool byItself = header->rtm_protocol == RTPROT_KERNEL || header->rtm_protocol == RTPROT_RA;
  const bool known = header->rtm_family == AF_INET || header->rtm_family == AF_INET6;
  if (!known || byItself || (header->rtm_flags & RTM_F_CLONED) != 0) return false;
  bool leadsThere = false;
  forEachLink(message,
              [&](int& link, unsigned char&) { leadsThere = leadsThere || link == index; });
  return leadsThere;
}

/// A numbered next hop goes with its link, and its number means nobody then. The kernel says beside
/// the number what it stands for, and takes only one of both. Where the link has stayed, so has
/// the route.
void removeNextHopNumber(KernelMessage& route) {
  const nlattr* number = attributeOf(route, RTA_NH_ID);
  if (!number) return;
  const auto at = route.begin() + (reinterpret_cast<const char*>(number) - route.data());
  route.erase(at, at + MNL_ALIGN(number->nla_len));
  messageIn(route)->nlmsg_len = static_cast<std::uint32_t>(route.size());
  messageIn(route)->nlmsg_flags |= NLM_F_EXCL;
}

void ask(KernelMessage& message) {
  messageIn(message)->nlmsg_flags = NLM_F_REQUEST | NLM_F_ACK | NLM_F_CREATE;
}

KernelMessage forLink(KernelMessage message, int before, int now) {
  ask(message);
  if (messageIn(message)->nlmsg_type == RTM_NEWADDR) {
    headerOf<ifaddrmsg>(message)->ifa_index = static_cast<unsigned>(now);
    return message;
  }
  removeNextHopNumber(message);
  headerOf<rtmsg>(message)->rtm_flags &= ~kStateOfLinks;
  forEachLink(message, [&](int& link, unsigned char& flags) {
    link = link == before ? now : link;
    flags &= static_cast<unsigned char>(~kStateOfLinks);
  });
  return message;
}

/// Sends those that the kernel has not taken yet; the last error.
int sendAll(const std::string& operation, std::vector<KernelMessage>& messages) {
  int last = 0;
  std::erase_if(messages, [&](const KernelMessage& message) {
    const int error = requestChange(operation, messageIn(message));
    const bool done = error == 0 || error == EEXIST;
    if (!done) last = error;
    return done;
  });
  return last;
}

std::string addressText(const KernelMessage& route, int type) {
  const nlattr* attribute = attributeOf(route, type);
  char text[INET6_ADDRSTRLEN];
  const int family = headerOf<rtmsg>(route)->rtm_family;
  if (!attribute || !inet_ntop(family, mnl_attr_get_payload(attribute), text, sizeof text))
    return {};
  return text;
}

/// Routes over several links, and those that a lease brings, are not for a file.
bool isForFile(const KernelMessage& route) {
  const auto* header = headerOf<rtmsg>(route);
  const bool isDefault = header->rtm_dst_len == 0 && header->rtm_table == RT_TABLE_MAIN;
  return header->rtm_type == RTN_UNICAST && header->rtm_protocol != RTPROT_DHCP && !isDefault &&
         !attributeOf(route, RTA_MULTIPATH);
}

void addRoute(IniFile& file, const KernelMessage& route) {
  const auto* header = headerOf<rtmsg>(route);
  const std::string any = header->rtm_family == AF_INET ? "0.0.0.0" : "::";
  const std::string to = addressText(route, RTA_DST);
  const std::uint32_t table = numberIn(route, RTA_TABLE), metric = numberIn(route, RTA_PRIORITY);
  IniSection& section = file.AddSection("Route");
  section.Set("Destination", (to.empty() ? any : to) + "/" + std::to_string(header->rtm_dst_len));
  if (const auto by = addressText(route, RTA_GATEWAY); !by.empty()) section.Set("Gateway", by);
  if (const auto from = addressText(route, RTA_PREFSRC); !from.empty())
    section.Set("PreferredSource", from);
  if (metric != 0) section.Set("Metric", std::to_string(metric));
  if (table != 0 && table != RT_TABLE_MAIN) section.Set("Table", std::to_string(table));
}

}  // namespace

InterfaceState::InterfaceState(const Files& files, std::string operation, std::string interface)
    : files_(files), operation_(std::move(operation)), interface_(std::move(interface)) {
  const NetworkTables tables = readNetworkTables(operation_);
  const auto link = std::find_if(tables.links.begin(), tables.links.end(),
                                 [&](const LinkRow& one) { return one.name == interface_; });
  if (link == tables.links.end())
    throw HostCtlException(operation_, interface_, "there is no such interface");
  link_ = *link;
  networkdHasIt_ = !networkFileOf(files_, link_.index).empty();
  std::copy_if(
      tables.addresses.begin(), tables.addresses.end(), std::back_inserter(lasting_),
      [&](const AddressRow& row) { return row.index == link_.index && row.lifetime == kForever; });
  for (auto& message : tableOf(operation_, RTM_GETADDR, "addresses"))
    if (isAddressToKeep(message, link_.index)) addresses_.push_back(std::move(message));
  for (auto& message : tableOf(operation_, RTM_GETROUTE, "routes"))
    if (isRouteToKeep(message, link_.index)) routes_.push_back(std::move(message));
}

void InterfaceState::PutBack() const {
  const auto now = static_cast<int>(if_nametoindex(interface_.c_str()));
  if (now == 0) throw HostCtlException(operation_, interface_, "its device did not come again");
  if (networkdHasIt_ && waitFor(kInForceWithin, [&] { return HasAddresses(); }))
    return letNetworkdFinish(files_, interface_);
  if (link_.up) setLinkUp(operation_, interface_, true);
  for (const auto* messages : {&addresses_, &routes_}) {
    std::vector<KernelMessage> left;
    for (const auto& message : *messages) left.push_back(forLink(message, link_.index, now));
    int error = 0;
    if (!waitFor(kBackWithin, [&] { return (error = sendAll(operation_, left)) == 0; }))
      throw HostCtlException(operation_, interface_,
                             std::string(messages == &addresses_ ? "an address" : "a route") +
                                 " could not be put back: " + std::strerror(error));
  }
}

bool InterfaceState::HasAddresses() const {
  const NetworkTables tables = readNetworkTables(operation_);
  const auto now = static_cast<int>(if_nametoindex(interface_.c_str()));
  return std::all_of(lasting_.begin(), lasting_.end(), [&](const AddressRow& wanted) {
    return std::any_of(
        tables.addresses.begin(), tables.addresses.end(), [&](const AddressRow& row) {
          return row.index == now && row.address == wanted.address && row.prefix == wanted.prefix;
        });
  });
}

void InterfaceState::WriteInto(IniFile& file) const {
  const auto said = file.GetAll("Network", "Address");
  for (const AddressRow& row : lasting_) {
    const std::string text = toString(row.address) + "/" + std::to_string(row.prefix);
    const auto* ipv6 = std::get_if<HostCtl::Network::Ipv6Address>(&row.address);
    const bool known = std::find(said.begin(), said.end(), text) != said.end();
    if (!known && !(ipv6 && ipv6->IsLinkLocal())) file.Add("Network", "Address", text);
  }
  for (const auto& route : routes_)
    if (isForFile(route)) addRoute(file, route);
}

}  // namespace HostLinux
