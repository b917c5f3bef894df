// SPDX-License-Identifier: MIT
#include "sample/network_writer.h"

#include "sample/fresh_network.h"
#include "sample/network_changes.h"
#include "sample/repair_changes.h"
#include "sample/switch_changes.h"

namespace HostSample {

using namespace HostCtl::Network;

void SampleNetworkWriter::WriteIpv6Enabled(bool enabled) {
  setIpv6Enabled(store_, enabled);
}

void SampleNetworkWriter::WriteIpConfig(const std::string& nic, const IpConfig& config) {
  setIpConfig(store_, nic, config);
}

void SampleNetworkWriter::RenewLease(const std::string& nic, LeaseRenewal what) {
  renewLease(store_, nic, what);
}

void SampleNetworkWriter::ReleaseLease(const std::string& nic) {
  releaseLease(store_, nic);
}

void SampleNetworkWriter::SetNicUp(const std::string& nic, bool up) {
  setNicUp(store_, nic, up);
}

void SampleNetworkWriter::WriteMacAddress(const std::string& nic, const std::string& macAddress) {
  setMacAddress(store_, nic, macAddress);
}

void SampleNetworkWriter::WriteIpv4Gateway(Ipv4Address gateway) {
  setIpv4Gateway(store_, gateway);
}

void SampleNetworkWriter::WriteIpv6Gateway(const Ipv6Address& gateway) {
  setIpv6Gateway(store_, gateway);
}

void SampleNetworkWriter::WriteDns(const HostSeam::DnsChange& change) {
  setDns(store_, change);
}

void SampleNetworkWriter::AddUplink(const std::string& switchName, const std::string& pnic) {
  takeUplink(store_, pnic, switchName);
}

void SampleNetworkWriter::RemoveUplink(const std::string& switchName, const std::string& pnic) {
  dropUplink(store_, pnic, switchName);
}

void SampleNetworkWriter::WriteActiveUplinks(const HostSeam::PortGroupName& portGroup,
                                             const std::vector<std::string>& pnics) {
  setActiveUplinks(store_, portGroup, pnics);
}

void SampleNetworkWriter::WriteVlanId(const HostSeam::PortGroupName& portGroup,
                                      std::int16_t vlanId) {
  setVlanId(store_, portGroup, vlanId);
}

void SampleNetworkWriter::MoveNic(const std::string& nic,
                                  const HostSeam::PortGroupName& portGroup) {
  moveNic(store_, nic, portGroup);
}

void SampleNetworkWriter::MoveNicToPort(const std::string& nic,
                                        const HostCtl::Network::HostLocalPort& port) {
  moveNicToPort(store_, nic, port);
}

void SampleNetworkWriter::AddDistributedUplink(const std::string& switchName,
                                               const std::string& pnic) {
  addDistributedUplink(store_, switchName, pnic);
}

void SampleNetworkWriter::RemoveDistributedUplink(const std::string& switchName,
                                                  const std::string& pnic) {
  removeDistributedUplink(store_, switchName, pnic);
}

void SampleNetworkWriter::DisableNetDumper() {
  disableNetDumper(store_);
}

void SampleNetworkWriter::ClearConfiguration() {
  clearNetwork(store_);
}

void SampleNetworkWriter::AutoConfigure() {
  autoConfigureNetwork(store_);
}

}  // namespace HostSample
