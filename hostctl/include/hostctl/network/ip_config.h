// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include "hostctl/network/address.h"

namespace HostCtl::Network {

/// The IP configuration of one kernel interface, as configured or as it runs at the moment. IPv4 is
/// off (none, whatever else is set), given by DHCP, or static; under DHCP the
/// address is empty until a lease is held. The gateways are the host's.
class IpConfig {
 public:
  bool GetIpv4UseNone() const { return ipv4None_; }
  bool GetIpv4UseDhcp() const { return ipv4Dhcp_ && !ipv4None_; }
  bool GetIpv4UseStatic() const { return !ipv4None_ && !ipv4Dhcp_; }
  Ipv4Address GetIpv4Address() const { return ipv4Address_; }
  Ipv4Address GetIpv4Netmask() const { return ipv4Netmask_; }
  Ipv4Address GetIpv4Gateway() const { return ipv4Gateway_; }
  /// Whether the interface is to have IPv6 where the host has it.
  bool GetIpv6Enabled() const { return ipv6Enabled_; }
  const std::vector<Ipv6Network>& GetIpv6Networks() const { return ipv6Networks_; }
  /// Those of them that an operator set.
  std::vector<Ipv6Network> GetStaticIpv6Networks() const;
  bool GetIpv6UseDhcp() const { return ipv6Dhcp_; }
  bool GetIpv6UseRouterAdvertisement() const { return ipv6RouterAdvertisement_; }
  const Ipv6Address& GetIpv6Gateway() const { return ipv6Gateway_; }
  bool GetDnsFromDhcp() const { return dnsFromDhcp_; }

  /// DHCP, nothing at all, or (neither) a static address.
  void SetUseDhcp(bool useDhcp, bool ipv4None = false) {
    ipv4Dhcp_ = useDhcp;
    ipv4None_ = ipv4None;
  }
  void SetIpv4Address(Ipv4Address address) { ipv4Address_ = address; }
  void SetIpv4Netmask(Ipv4Address mask) { ipv4Netmask_ = mask; }
  void SetIpv4Gateway(Ipv4Address gateway) { ipv4Gateway_ = gateway; }
  void EnableIpv6() { ipv6Enabled_ = true; }
  void SetIpv6Networks(std::vector<Ipv6Network> networks) { ipv6Networks_ = std::move(networks); }
  void SetUseIpv6Dhcp(bool on) { ipv6Dhcp_ = on; }
  void SetUseIpv6RouterAdvertised(bool on) { ipv6RouterAdvertisement_ = on; }
  void SetIpv6Gateway(const Ipv6Address& gateway) { ipv6Gateway_ = gateway; }
  void SetDhcpDns(bool on) { dnsFromDhcp_ = on; }

  bool operator==(const IpConfig&) const = default;

 private:
  bool ipv4None_ = true;
  bool ipv4Dhcp_ = false;
  Ipv4Address ipv4Address_, ipv4Netmask_, ipv4Gateway_;
  bool ipv6Enabled_ = false;
  std::vector<Ipv6Network> ipv6Networks_;
  bool ipv6Dhcp_ = false;
  bool ipv6RouterAdvertisement_ = false;
  Ipv6Address ipv6Gateway_;
  bool dnsFromDhcp_ = false;
};

}  // namespace HostCtl::Network
