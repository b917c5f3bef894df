// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hostctl/network/network_info.h"

namespace TarnCtl::Network {

/// The network of the host that the program runs on. The management interface is the one that
/// this software set up; on a host that it did not set up, the one that carries the default route,
/// else the first with a global address.
class NetworkInfoImpl : public HostCtl::Network::NetworkInfo {
 public:
  void UpdateManagementInterface() override;
  std::unique_ptr<HostCtl::Network::TarnNic> GetManagementInterface() override;
  std::vector<std::unique_ptr<HostCtl::Network::TarnNic>> GetTarnNics() override;
  std::vector<HostCtl::Network::PnicRecord> GetPnics() override;
  bool IsTarnIpv6Enabled() override;
  void SetTarnIpv6Enabled(bool enabled) override;
  void DisableNetDumper() override;
  void ClearNetworkConfig() override;
  void AutoConfigNetwork() override;

 private:
  std::unique_ptr<HostCtl::Network::TarnNic> management_;
};

/// A physical adapter by its name.
class PnicImpl : public HostCtl::Network::Pnic {
 public:
  explicit PnicImpl(const std::string& name);
  void Refresh() override;
  const HostCtl::Network::PnicRecord& GetRecord() const override { return record_; }

 private:
  HostCtl::Network::PnicRecord record_;
};

/// Reads once and answers from that until Refresh. Throws for a stack other than the default one.
class DnsConfigImpl : public HostCtl::Network::DnsConfig {
 public:
  explicit DnsConfigImpl(const std::string& stack);
  ~DnsConfigImpl() override;
  void Refresh() override;
  std::string GetHostname() override;
  std::string GetDomain() override;
  std::vector<HostCtl::Network::IpAddress> GetNameServers() override;
  std::vector<std::string> GetSearchDomains() override;
  void SetHostname(const std::string& name, bool fromDhcp) override;
  void SetFqdn(const std::string& host, bool fromDhcp, const std::string& domain) override;
  void RemoveNameServers() override;
  void AddUserNameServer(const HostCtl::Network::IpAddress& server) override;
  void SetSearchDomainsString(const std::string& domains) override;
  void AddUserSearchDomain(const std::string& domain) override;
  void SaveConfig() override;

 private:
  struct State;
  State& Read();
  std::unique_ptr<State> state_;
};

/// Throws for a stack other than the default one.
class RoutingInfoImpl : public HostCtl::Network::RoutingInfo {
 public:
  explicit RoutingInfoImpl(const std::string& stack);
  HostCtl::Network::Ipv4Address GetTarnDefaultGateway() override;
  HostCtl::Network::Ipv6Address GetTarnIpv6DefaultGateway() override;
  void SetTarnDefaultGateway(HostCtl::Network::Ipv4Address gateway, bool fromDhcp) override;
  void SetIpv6TarnDefaultGateway(const HostCtl::Network::Ipv6Address& gateway) override;
};

}  // namespace TarnCtl::Network
