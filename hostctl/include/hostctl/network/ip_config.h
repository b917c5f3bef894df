// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include "hostctl/network/address.h"

namespace HostCtl::Network {

/// The IP configuration of one kernel interface, as configured or as it runs at the moment. IPv4 is
/// off (none, whatever else is set), given by DHCP, or static; under DHCP the
/// address is empty until a lease is held.
class IpConfig {
 public:
  bool GetIpv4UseNone() const { return ipv4None_; }
  bool GetIpv4UseDhcp() const { return ipv4Dhcp_; }
  Ipv4Address GetIpv4Address() const { return ipv4Address_; }
  Ipv4Address GetIpv4Netmask() const { return ipv4Netmask_; }
  Ipv4Address GetIpv4Gateway() const { return ipv4Gateway_; }
  const std::vector<Ipv6Network>& GetIpv6Networks() const { return ipv6Networks_; }
  bool GetIpv6UseDhcp() const { return ipv6Dhcp_; }
  bool GetIpv6UseRouterAdvertisement() const { return ipv6RouterAdvertisement_; }
  bool GetDnsFromDhcp() const { return dnsFromDhcp_; }

  void SetIpv4UseNone(bool on) { ipv4None_ = on; }
  void SetIpv4UseDhcp(bool on) { ipv4Dhcp_ = on; }
  void SetIpv4Address(Ipv4Address address) { ipv4Address_ = address; }
  void SetIpv4Netmask(Ipv4Address mask) { ipv4Netmask_ = mask; }
  void SetIpv4Gateway(Ipv4Address gateway) { ipv4Gateway_ = gateway; }
  void SetIpv6Networks(std::vector<Ipv6Network> networks) { ipv6Networks_ = std::move(networks); }
  void SetIpv6UseDhcp(bool on) { ipv6Dhcp_ = on; }
  void SetIpv6UseRouterAdvertisement(bool on) { ipv6RouterAdvertisement_ = on; }
  void SetDnsFromDhcp(bool on) { dnsFromDhcp_ = on; }

  bool operator==(const IpConfig&) const = default;

 private:
  bool ipv4None_ = true;
  bool ipv4Dhcp_ = false;
  Ipv4Address ipv4Address_, ipv4Netmask_, ipv4Gateway_;
  std::vector<Ipv6Network> ipv6Networks_;
  bool ipv6Dhcp_ = false;
  bool ipv6RouterAdvertisement_ = false;
  bool dnsFromDhcp_ = false;
};

}  // namespace HostCtl::Network
