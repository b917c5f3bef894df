// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hostctl/network/distributed_switch.h"
#include "hostctl/network/nic.h"
#include "hostctl/network/virtual_switch.h"

namespace HostCtl::Network {

/// The host's network as a whole. Every operation throws HostCtlException when the host fails it.
class NetworkInfo {
 public:
  virtual ~NetworkInfo() = default;
  /// Looks the management interface up anew. GetManagementInterface hands it out once after each
  /// such look; null otherwise, and when the host has none.
  virtual void UpdateManagementInterface() = 0;
  virtual std::unique_ptr<TarnNic> GetManagementInterface() = 0;
  /// Every kernel interface, in the host's order.
  virtual std::vector<std::unique_ptr<TarnNic>> GetTarnNics() = 0;
  virtual std::vector<PnicRecord> GetPnics() = 0;
  /// Whether IPv6 is enabled in the kernel as it runs.
  virtual bool IsTarnIpv6Enabled() = 0;
  /// In force after a restart of the host.
  virtual void SetTarnIpv6Enabled(bool enabled) = 0;

  /// Nothing of the host is dumped over the network any more.
  virtual void DisableNetDumper() = 0;
  /// Forgets the network's configuration, which leaves the host unreachable until AutoConfigNetwork
  /// gives it that of a fresh host.
  virtual void ClearNetworkConfig() = 0;
  virtual void AutoConfigNetwork() = 0;
};

/// The host's standard switches. Throws HostCtlException when the host fails to say.
class VirtualSwitchInfo {
 public:
  virtual ~VirtualSwitchInfo() = default;
  virtual std::vector<std::unique_ptr<VirtualSwitch>> GetVirtualSwitches() = 0;
};

/// The distributed switches that this host takes part in. Throws HostCtlException when the host
/// fails to say.
class DistributedSwitchInfo {
 public:
  virtual ~DistributedSwitchInfo() = default;
  virtual std::vector<std::unique_ptr<DistributedSwitch>> GetDistributedSwitches() = 0;
};

/// Name resolution of one network stack. Changes are collected; only SaveConfig brings them to the
/// host, and touches nothing where they are what it has. Throws HostCtlException when the host
/// fails.
class DnsConfig {
 public:
  virtual ~DnsConfig() = default;
  /// Reads the host again and forgets collected changes.
  virtual void Refresh() = 0;
  virtual std::string GetHostname() = 0;
  /// The collected domain where there is one.
  virtual std::string GetDomain() = 0;
  virtual std::vector<IpAddress> GetNameServers() = 0;
  virtual std::vector<std::string> GetSearchDomains() = 0;

  /// The name's first label; the domain stays. `fromDhcp`: a DHCP server said so, not an operator.
  virtual void SetHostname(const std::string& name, bool fromDhcp) = 0;
  virtual void SetFqdn(const std::string& host, bool fromDhcp, const std::string& domain) = 0;
  virtual void RemoveNameServers() = 0;
  virtual void AddUserNameServer(const IpAddress& server) = 0;
  /// Domains separated by blanks.
  virtual void SetSearchDomainsString(const std::string& domains) = 0;
  /// One that is listed already is not listed twice.
  virtual void AddUserSearchDomain(const std::string& domain) = 0;
  virtual void SaveConfig() = 0;
};

/// Default gateways of one network stack; empty addresses when there is none. Throws
/// HostCtlException when the host fails.
class RoutingInfo {
 public:
  virtual ~RoutingInfo() = default;
  virtual Ipv4Address GetTarnDefaultGateway() = 0;
  virtual Ipv6Address GetTarnIpv6DefaultGateway() = 0;
  /// The empty address removes it. `fromDhcp`: a DHCP server gave it, not an operator.
  virtual void SetTarnDefaultGateway(Ipv4Address gateway, bool fromDhcp) = 0;
  virtual void SetIpv6TarnDefaultGateway(const Ipv6Address& gateway) = 0;
};

/// The only network stack that there is to manage.
inline constexpr const char* kDefaultStack = "defaultTcpipStack";

}  // namespace HostCtl::Network
