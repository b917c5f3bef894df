// SPDX-License-Identifier: MIT
#include "sample/network_writer.h"

#include "hostctl/lib/exception.h"

namespace HostSample {

namespace {

[[noreturn]] void refuse(const char* operation) {
  throw HostCtl::Lib::HostCtlException(operation, "network", "not possible on this host");
}

}  // namespace

void SampleNetworkWriter::WriteIpv6Enabled(bool) {
  refuse("WriteIpv6Enabled");
}

void SampleNetworkWriter::WriteIpConfig(const std::string&, const HostCtl::Network::IpConfig&) {
  refuse("WriteIpConfig");
}

void SampleNetworkWriter::RenewLease(const std::string&, HostCtl::Network::LeaseRenewal) {
  refuse("RenewLease");
}

void SampleNetworkWriter::ReleaseLease(const std::string&) {
  refuse("ReleaseLease");
}

void SampleNetworkWriter::SetNicUp(const std::string&, bool) {
  refuse("SetNicUp");
}

void SampleNetworkWriter::WriteMacAddress(const std::string&, const std::string&) {
  refuse("WriteMacAddress");
}

void SampleNetworkWriter::WriteIpv4Gateway(HostCtl::Network::Ipv4Address) {
  refuse("WriteIpv4Gateway");
}

void SampleNetworkWriter::WriteIpv6Gateway(const HostCtl::Network::Ipv6Address&) {
  refuse("WriteIpv6Gateway");
}

void SampleNetworkWriter::WriteDns(const HostSeam::DnsChange&) {
  refuse("WriteDns");
}

void SampleNetworkWriter::AddUplink(const std::string&, const std::string&) {
  refuse("AddUplink");
}

void SampleNetworkWriter::RemoveUplink(const std::string&, const std::string&) {
  refuse("RemoveUplink");
}

void SampleNetworkWriter::WriteActiveUplinks(const HostSeam::PortGroupName&,
                                             const std::vector<std::string>&) {
  refuse("WriteActiveUplinks");
}

void SampleNetworkWriter::WriteVlanId(const HostSeam::PortGroupName&, std::int16_t) {
  refuse("WriteVlanId");
}

}  // namespace HostSample
