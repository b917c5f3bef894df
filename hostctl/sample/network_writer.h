// SPDX-License-Identifier: MIT
#pragma once

#include "hostseam/network.h"
#include "sample/store.h"

namespace HostSample {

/// Changes the network that host.json describes. Switching to DHCP gets the interface the lease
/// that the file offers, if any.
class SampleNetworkWriter : public HostSeam::NetworkWriter {
 public:
  /// `store` outlives it.
  explicit SampleNetworkWriter(Store& store) : store_(store) {}

  void WriteIpv6Enabled(bool enabled) override;
  void WriteIpConfig(const std::string& nic, const HostCtl::Network::IpConfig& config) override;
  void RenewLease(const std::string& nic, HostCtl::Network::LeaseRenewal what) override;
  void ReleaseLease(const std::string& nic) override;
  void SetNicUp(const std::string& nic, bool up) override;
  void WriteMacAddress(const std::string& nic, const std::string& macAddress) override;
  void WriteIpv4Gateway(HostCtl::Network::Ipv4Address gateway) override;
  void WriteIpv6Gateway(const HostCtl::Network::Ipv6Address& gateway) override;
  void WriteDns(const HostSeam::DnsChange& change) override;
  void AddUplink(const std::string& switchName, const std::string& pnic) override;
  void RemoveUplink(const std::string& switchName, const std::string& pnic) override;
  void WriteActiveUplinks(const HostSeam::PortGroupName& portGroup,
                          const std::vector<std::string>& pnics) override;
  void WriteVlanId(const HostSeam::PortGroupName& portGroup, std::int16_t vlanId) override;
  void MoveNic(const std::string& nic, const HostSeam::PortGroupName& portGroup) override;
  void MoveNicToPort(const std::string& nic, const HostCtl::Network::HostLocalPort& port) override;
  void AddDistributedUplink(const std::string& switchName, const std::string& pnic) override;
  void RemoveDistributedUplink(const std::string& switchName, const std::string& pnic) override;
  void DisableNetDumper() override;
  void ClearConfiguration() override;
  void AutoConfigure() override;

 private:
  Store& store_;
};

}  // namespace HostSample
