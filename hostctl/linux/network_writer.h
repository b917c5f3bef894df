// SPDX-License-Identifier: MIT
#pragma once

#include "hostseam/network.h"
#include "linux/files.h"

namespace HostLinux {

/// Changes the network of a Linux machine through systemd-networkd: with files of its own in
/// networkd's folder, which it has networkd take over, and through hostnamed and resolv.conf.
class LinuxNetworkWriter : public HostSeam::NetworkWriter {
 public:
  /// `files` outlives it.
  explicit LinuxNetworkWriter(const Files& files) : files_(files) {}

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
  const Files& files_;
};

}  // namespace HostLinux
