// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "hostctl/network/nic.h"

namespace HostSeam {

/// One kernel interface as the host reports it.
struct KernelNic {
  std::string name;
  bool setUpByKiva = false;
  bool carriesDefaultRoute = false;
  HostCtl::Network::IpConfig configured;
  HostCtl::Network::IpConfig running;
  HostCtl::Network::ConnectionPoint connection;
  /// The one that it uses; empty when unknown.
  std::string macAddress;
};

/// `activeUplinks` are those of its teaming policy, the primary one first.
struct PortGroupRecord {
  std::string name;
  std::int16_t vlanId = 0;
  std::vector<std::string> activeUplinks;
  bool operator==(const PortGroupRecord&) const = default;
};

struct SwitchRecord {
  std::string name;
  std::vector<std::string> uplinks;
  std::vector<PortGroupRecord> portGroups;
  bool operator==(const SwitchRecord&) const = default;
};

struct DistributedSwitchRecord {
  std::string name;
  bool thirdParty = false;
  std::vector<std::string> uplinks;
  std::vector<HostCtl::Network::DistributedPort> ports;
  bool operator==(const DistributedSwitchRecord&) const = default;
};

/// Which port group is meant; names of port groups are unique on their switch only.
struct PortGroupName {
  std::string switchName;
  std::string name;
};

/// `hostname` is the first label. `nameServers` are those that the host asks, whoever named them.
struct DnsRecord {
  std::string hostname;
  std::string domain;
  std::vector<HostCtl::Network::IpAddress> nameServers;
  std::vector<std::string> searchDomains;
};

/// What SaveConfig changes; what is absent stays as it is.
struct DnsChange {
  std::optional<std::string> hostname;
  std::optional<std::string> domain;
  std::optional<std::vector<HostCtl::Network::IpAddress>> nameServers;
  std::optional<std::vector<std::string>> searchDomains;
};

struct RoutingRecord {
  HostCtl::Network::Ipv4Address ipv4Gateway;
  HostCtl::Network::Ipv6Address ipv6Gateway;
};

/// Changes of the host's network, in force when the call returns and after a restart. Each throws
/// HostCtlException when the host refuses it, with the host as it was; where the host is already as
/// it shall be, nothing is touched.
class NetworkWriter {
 public:
  virtual ~NetworkWriter() = default;

  /// For the next start of the host.
  virtual void WriteIpv6Enabled(bool enabled) = 0;
  /// Everything in `config` but the gateways.
  virtual void WriteIpConfig(const std::string& nic, const HostCtl::Network::IpConfig& config) = 0;
  virtual void RenewLease(const std::string& nic, HostCtl::Network::LeaseRenewal what) = 0;
  virtual void ReleaseLease(const std::string& nic) = 0;
  /// Until the next start of the host.
  virtual void SetNicUp(const std::string& nic, bool up) = 0;
  virtual void WriteMacAddress(const std::string& nic, const std::string& macAddress) = 0;

  /// The gateways of the management interface; the empty address for none.
  virtual void WriteIpv4Gateway(HostCtl::Network::Ipv4Address gateway) = 0;
  virtual void WriteIpv6Gateway(const HostCtl::Network::Ipv6Address& gateway) = 0;
  virtual void WriteDns(const DnsChange& change) = 0;

  virtual void AddUplink(const std::string& switchName, const std::string& pnic) = 0;
  virtual void RemoveUplink(const std::string& switchName, const std::string& pnic) = 0;
  virtual void WriteActiveUplinks(const PortGroupName& portGroup,
                                  const std::vector<std::string>& pnics) = 0;
  virtual void WriteVlanId(const PortGroupName& portGroup, std::int16_t vlanId) = 0;

  /// Moves a kernel NIC, with its IP configuration, to a port group from whatever it is on.
  virtual void MoveNic(const std::string& nic, const PortGroupName& portGroup) = 0;
  /// Puts a NIC of a distributed switch on a new port of it; the old port goes.
  virtual void MoveNicToPort(const std::string& nic,
                             const HostCtl::Network::HostLocalPort& port) = 0;
  virtual void AddDistributedUplink(const std::string& switchName, const std::string& pnic) = 0;
  virtual void RemoveDistributedUplink(const std::string& switchName, const std::string& pnic) = 0;

  virtual void DisableNetDumper() = 0;
  /// What was cleared is kept somewhere; where that fails nothing is cleared.
  virtual void ClearConfiguration() = 0;
  /// Gives a host without any configuration that of a fresh one.
  virtual void AutoConfigure() = 0;
};

}  // namespace HostSeam
