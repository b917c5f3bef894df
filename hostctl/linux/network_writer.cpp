// SPDX-License-Identifier: MIT
#include "linux/network_writer.h"

#include "hostctl/lib/exception.h"
#include "linux/network/switches.h"

namespace HostLinux {

namespace {

[[noreturn]] void refuse(const char* operation) {
  throw HostCtl::Lib::HostCtlException(operation, "network", "not possible on this host");
}

}  // namespace

void LinuxNetworkWriter::WriteIpv6Enabled(bool) {
  refuse("WriteIpv6Enabled");
}

void LinuxNetworkWriter::WriteIpConfig(const std::string&, const HostCtl::Network::IpConfig&) {
  refuse("WriteIpConfig");
}

void LinuxNetworkWriter::RenewLease(const std::string&, HostCtl::Network::LeaseRenewal) {
  refuse("RenewLease");
}

void LinuxNetworkWriter::ReleaseLease(const std::string&) {
  refuse("ReleaseLease");
}

void LinuxNetworkWriter::SetNicUp(const std::string&, bool) {
  refuse("SetNicUp");
}

void LinuxNetworkWriter::WriteMacAddress(const std::string& nic, const std::string& macAddress) {
  writeMacAddress(files_, nic, macAddress);
}

void LinuxNetworkWriter::WriteIpv4Gateway(HostCtl::Network::Ipv4Address) {
  refuse("WriteIpv4Gateway");
}

void LinuxNetworkWriter::WriteIpv6Gateway(const HostCtl::Network::Ipv6Address&) {
  refuse("WriteIpv6Gateway");
}

void LinuxNetworkWriter::WriteDns(const HostSeam::DnsChange&) {
  refuse("WriteDns");
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

}  // namespace HostLinux
