// SPDX-License-Identifier: MIT
#include "linux/network_writer.h"

#include <syslog.h>

#include "hostctl/lib/exception.h"
#include "linux/network/distributed_switches.h"
#include "linux/network/ip_settings.h"
#include "linux/network/ipv6_switch.h"
#include "linux/network/leases.h"
#include "linux/network/name_settings.h"
#include "linux/network/net_dumper.h"
#include "linux/network/switches.h"

namespace HostLinux {

namespace {

/// The change itself is done.
void follow(const Files& files) try {
  followLeasedServers(files);
} catch (const HostCtl::Lib::HostCtlException& error) {
  syslog(LOG_USER | LOG_WARNING, "The leases' name servers: %s", error.what());
}

}  // namespace

void LinuxNetworkWriter::WriteIpv6Enabled(bool enabled) {
  writeIpv6Enabled(files_, enabled);
}

void LinuxNetworkWriter::WriteIpConfig(const std::string& nic,
                                       const HostCtl::Network::IpConfig& config) {
  writeIpConfig(files_, nic, config);
  follow(files_);
}

void LinuxNetworkWriter::RenewLease(const std::string& nic, HostCtl::Network::LeaseRenewal what) {
  renewLease(files_, nic, what);
  follow(files_);
}

void LinuxNetworkWriter::ReleaseLease(const std::string& nic) {
  releaseLease(files_, nic);
}

void LinuxNetworkWriter::SetNicUp(const std::string& nic, bool up) {
  setNicUp(files_, nic, up);
}

void LinuxNetworkWriter::WriteMacAddress(const std::string& nic, const std::string& macAddress) {
  writeMacAddress(files_, nic, macAddress);
}

void LinuxNetworkWriter::WriteIpv4Gateway(HostCtl::Network::Ipv4Address gateway) {
  writeGateway(files_, gateway);
}

void LinuxNetworkWriter::WriteIpv6Gateway(const HostCtl::Network::Ipv6Address& gateway) {
  writeGateway(files_, gateway);
}

void LinuxNetworkWriter::WriteDns(const HostSeam::DnsChange& change) {
  writeDns(files_, change);
}

void LinuxNetworkWriter::AddUplink(const std::string& switchName, const std::string& pnic) {
  addUplink(files_, switchName, pnic);
}

void LinuxNetworkWriter::RemoveUplink(const std::string& switchName, const std::string& pnic) {
  removeUplink(files_, switchName, pnic);
}

void LinuxNetworkWriter::WriteActiveUplinks(const HostSeam::PortGroupName& portGroup,
                                            const std::vector<std::string>& pnics) {
  writeActiveUplinks(files_, portGroup, pnics);
}

void LinuxNetworkWriter::WriteVlanId(const HostSeam::PortGroupName& portGroup,
                                     std::int16_t vlanId) {
  writeVlanId(files_, portGroup, vlanId);
}

void LinuxNetworkWriter::MoveNic(const std::string& nic, const HostSeam::PortGroupName& portGroup) {
  moveNic(files_, nic, portGroup);
}

void LinuxNetworkWriter::MoveNicToPort(const std::string& nic,
                                       const HostCtl::Network::HostLocalPort& port) {
  moveNicToPort(files_, nic, port);
}

void LinuxNetworkWriter::AddDistributedUplink(const std::string& switchName,
                                              const std::string& pnic) {
  addDistributedUplink(files_, switchName, pnic);
}

void LinuxNetworkWriter::RemoveDistributedUplink(const std::string& switchName,
                                                 const std::string& pnic) {
  removeDistributedUplink(files_, switchName, pnic);
}

void LinuxNetworkWriter::DisableNetDumper() {
  disableNetDumper(files_);
}

void LinuxNetworkWriter::ClearConfiguration() {
  clearNetwork(files_);
}

void LinuxNetworkWriter::AutoConfigure() {
  autoConfigureNetwork(files_);
}

}  // namespace HostLinux
