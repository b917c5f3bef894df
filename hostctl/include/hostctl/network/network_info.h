// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hostctl/network/nic.h"

namespace HostCtl::Network {

/// The host's network as a whole. Every operation throws HostCtlException when the host fails it.
class NetworkInfo {
 public:
  virtual ~NetworkInfo() = default;
  /// Looks the management interface up anew. GetManagementInterface hands it out once after each
  /// such look; null otherwise, and when the host has none.
  virtual void UpdateManagementInterface() = 0;
  virtual std::unique_ptr<TarnNic> GetManagementInterface() = 0;
  virtual std::vector<Pnic> GetPnics() = 0;
  virtual bool IsTarnIpv6Enabled() = 0;
};

/// Name resolution of one network stack. Throws HostCtlException when the host fails to say.
class DnsConfig {
 public:
  virtual ~DnsConfig() = default;
  virtual void Refresh() = 0;
  virtual std::string GetHostname() = 0;
  virtual std::string GetDomain() = 0;
  virtual std::vector<IpAddress> GetNameServers() = 0;
  virtual std::vector<std::string> GetSearchDomains() = 0;
};

/// Default gateways of one network stack; empty addresses when there is none. Throws
/// HostCtlException when the host fails to say.
class RoutingInfo {
 public:
  virtual ~RoutingInfo() = default;
  virtual Ipv4Address GetTarnDefaultGateway() = 0;
  virtual Ipv6Address GetTarnIpv6DefaultGateway() = 0;
};

/// The only network stack that there is to manage.
inline constexpr const char* kDefaultStack = "defaultTcpipStack";

}  // namespace HostCtl::Network
