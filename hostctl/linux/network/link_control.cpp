// SPDX-License-Identifier: MIT
#include "linux/network/link_control.h"

#include <linux/if_bridge.h>
#include <linux/if_ether.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "hostctl/lib/exception.h"
#include "linux/kernel_socket.h"
#include "linux/network/mac_address.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

constexpr const char* kProbe = "kiva-probe";
constexpr int kLastVlan = 4094;

void demandDone(int error, const std::string& operation, const std::string& link) {
  if (error != 0) throw HostCtlException(operation, link, std::strerror(error));
}

/// One request about a link, and whether the kernel did it.
class LinkRequest {
 public:
  LinkRequest(int type, unsigned flags, const ifinfomsg& about) {
    header_ = mnl_nlmsg_put_header(buffer_.data());
    header_->nlmsg_type = static_cast<std::uint16_t>(type);
    header_->nlmsg_flags = static_cast<std::uint16_t>(NLM_F_REQUEST | NLM_F_ACK | flags);
    std::memcpy(mnl_nlmsg_put_extra_header(header_, sizeof about), &about, sizeof about);
  }
  LinkRequest(const LinkRequest&) = delete;
  LinkRequest& operator=(const LinkRequest&) = delete;

  nlmsghdr* Message() { return header_; }

  /// 0, or the number of the error.
  int Send(const std::string& operation) const { return requestChange(operation, header_); }

  void Demand(const std::string& operation, const std::string& link) const {
    demandDone(Send(operation), operation, link);
  }

 private:
  alignas(nlmsghdr) std::array<char, 1024> buffer_{};
  nlmsghdr* header_;
};

ifinfomsg linkNamed(const std::string& operation, const std::string& link) {
  ifinfomsg about{};
  about.ifi_index = static_cast<int>(if_nametoindex(link.c_str()));
  if (about.ifi_index == 0) throw HostCtlException(operation, link, "there is no such interface");
  return about;
}

void putBridgeOption(nlmsghdr* message, std::uint16_t option, std::uint16_t value) {
  nlattr* info = mnl_attr_nest_start(message, IFLA_LINKINFO);
  mnl_attr_put_strz(message, IFLA_INFO_KIND, "bridge");
  nlattr* data = mnl_attr_nest_start(message, IFLA_INFO_DATA);
  if (option == IFLA_BR_VLAN_FILTERING)
    mnl_attr_put_u8(message, option, static_cast<std::uint8_t>(value));
  else
    mnl_attr_put_u16(message, option, value);
  mnl_attr_nest_end(message, data);
  mnl_attr_nest_end(message, info);
}

void setBridgeOption(const std::string& operation, const std::string& bridge, std::uint16_t option,
                     std::uint16_t value) {
  LinkRequest request(RTM_NEWLINK, 0, linkNamed(operation, bridge));
  putBridgeOption(request.Message(), option, value);
  request.Demand(operation, bridge);
}

void putVlan(nlmsghdr* message, unsigned flags, int vlan) {
  const bridge_vlan_info info{static_cast<std::uint16_t>(flags), static_cast<std::uint16_t>(vlan)};
  mnl_attr_put(message, IFLA_BRIDGE_VLAN_INFO, sizeof info, &info);
}

void putVlans(nlmsghdr* message, PortVlans::Range range) {
  const bool one = range.first == range.last;
  putVlan(message, one ? 0 : BRIDGE_VLAN_INFO_RANGE_BEGIN, range.first);
  if (!one) putVlan(message, BRIDGE_VLAN_INFO_RANGE_END, range.last);
}

/// Adds or deletes (`type`) a range of a port's VLANs, or sets the one of frames without a tag.
void changeVlans(const std::string& operation, const std::string& port, int type,
                 PortVlans::Range range, unsigned flags = 0) {
  ifinfomsg about = linkNamed(operation, port);
  about.ifi_family = AF_BRIDGE;
  LinkRequest request(type, 0, about);
  nlattr* nest = mnl_attr_nest_start(request.Message(), IFLA_AF_SPEC);
  if (flags != 0)
    putVlan(request.Message(), flags, range.first);
  else
    putVlans(request.Message(), range);
  mnl_attr_nest_end(request.Message(), nest);
  request.Demand(operation, port);
}

}  // namespace

void setLinkUp(const std::string& operation, const std::string& link, bool up) {
  ifinfomsg about = linkNamed(operation, link);
  about.ifi_change = IFF_UP;
  about.ifi_flags = up ? IFF_UP : 0;
  LinkRequest(RTM_NEWLINK, 0, about).Demand(operation, link);
}

void releaseLink(const std::string& operation, const std::string& link) {
  LinkRequest request(RTM_NEWLINK, 0, linkNamed(operation, link));
  mnl_attr_put_u32(request.Message(), IFLA_MASTER, 0);
  request.Demand(operation, link);
}

void setLinkAddress(const std::string& operation, const std::string& link,
                    const std::string& address) {
  const auto parsed = MacAddress::FromString(address);
  if (!parsed) throw HostCtlException(operation, link, address + " is no hardware address");
  LinkRequest request(RTM_NEWLINK, 0, linkNamed(operation, link));
  mnl_attr_put(request.Message(), IFLA_ADDRESS, ETH_ALEN, parsed->GetBytes().data());
  int error = request.Send(operation);
  if (error == EBUSY) {
    try {
      setLinkUp(operation, link, false);
      error = request.Send(operation);
    } catch (const HostCtlException&) {
      setLinkUp(operation, link, true);
      throw;
    }
    setLinkUp(operation, link, true);
  }
  demandDone(error, operation, link);
}

void deleteLink(const std::string& operation, const std::string& link) {
  if (if_nametoindex(link.c_str()) == 0) return;
  LinkRequest(RTM_DELLINK, 0, linkNamed(operation, link)).Demand(operation, link);
}

bool kernelHasBonding(const std::string& operation) {
  LinkRequest request(RTM_NEWLINK, NLM_F_CREATE | NLM_F_EXCL, ifinfomsg{});
  mnl_attr_put_strz(request.Message(), IFLA_IFNAME, kProbe);
  nlattr* info = mnl_attr_nest_start(request.Message(), IFLA_LINKINFO);
  mnl_attr_put_strz(request.Message(), IFLA_INFO_KIND, "bond");
  mnl_attr_nest_end(request.Message(), info);
  const int error = request.Send(operation);
  if (error == 0) deleteLink(operation, kProbe);
  if (error == EOPNOTSUPP) return false;
  if (error == 0 || error == EEXIST) return true;
  throw HostCtlException(operation, "bond", std::strerror(error));
}

void setVlanFiltering(const std::string& operation, const std::string& bridge,
                      VlanFiltering filtering) {
  setBridgeOption(operation, bridge, IFLA_BR_VLAN_FILTERING,
                  filtering == VlanFiltering::On ? 1 : 0);
}

void clearDefaultVlan(const std::string& operation, const std::string& bridge) {
  setBridgeOption(operation, bridge, IFLA_BR_VLAN_DEFAULT_PVID, 0);
}

void setPortVlans(const std::string& operation, const std::string& port, const PortVlans& vlans) {
  changeVlans(operation, port, RTM_DELLINK, {1, kLastVlan});
  for (const auto& range : vlans.tagged) changeVlans(operation, port, RTM_SETLINK, range);
  changeVlans(operation, port, RTM_SETLINK, {vlans.untagged, vlans.untagged},
              BRIDGE_VLAN_INFO_PVID | BRIDGE_VLAN_INFO_UNTAGGED);
}

}  // namespace HostLinux
