// SPDX-License-Identifier: MIT
#include "src/tarn_nic_impl.h"

#include "hostctl/lib/exception.h"
#include "src/enter.h"

namespace TarnCtl::Network {

using namespace HostCtl::Network;
using HostCtl::Lib::HostCtlException;

namespace {

constexpr std::chrono::seconds kFreshFor{1};

std::string ipv4Text(const IpConfig& config) {
  if (config.GetIpv4UseNone()) return "none";
  if (config.GetIpv4UseDhcp()) return "dhcp";
  return config.GetIpv4Address().GetStringAddress() + "/" +
         config.GetIpv4Netmask().GetStringAddress();
}

// "dhcp router fd00::1/64": what gives addresses, then the static ones.
std::string ipv6Text(const IpConfig& config) {
  if (!config.GetIpv6Enabled()) return "none";
  std::string text;
  if (config.GetIpv6UseDhcp()) text += "dhcp ";
  if (config.GetIpv6UseRouterAdvertisement()) text += "router ";
  for (const auto& network : config.GetStaticIpv6Networks()) text += network.ToString() + " ";
  return text.empty() ? "static" : text.substr(0, text.size() - 1);
}

}  // namespace

bool TarnNicImpl::IsStale() const {
  return Clock::now() - readAt_ > kFreshFor;
}

void TarnNicImpl::Refresh() {
  for (auto& nic : enter("Refresh").ReadKernelNics())
    if (nic.name == nic_.name) nic_ = std::move(nic);
  readAt_ = Clock::now();
}

IpConfig TarnNicImpl::GetConfiguredIpConfig() const {
  return enter("GetConfiguredIpConfig"), nic_.configured;
}

IpConfig TarnNicImpl::GetIpConfig() const {
  return enter("GetIpConfig"), nic_.running;
}

ConnectionPoint TarnNicImpl::GetConnectionPoint() const {
  return enter("GetConnectionPoint"), nic_.connection;
}

std::string TarnNicImpl::GetMacAddress() const {
  return enter("GetMacAddress"), nic_.macAddress;
}

void TarnNicImpl::SetIpConfig(const IpConfig& config) {
  enterChange("SetIpConfig", nic_.name, "ipv4=" + ipv4Text(config), "ipv6=" + ipv6Text(config),
              std::string("dhcpDns=") + onOff(config.GetDnsFromDhcp()))
      .Network()
      .WriteIpConfig(nic_.name, config);
}

void TarnNicImpl::RenewLease(LeaseRenewal what) {
  enterChange("RenewLease", nic_.name, what == LeaseRenewal::Ipv4 ? "ipv4" : "ipv4 ipv6")
      .Network()
      .RenewLease(nic_.name, what);
}

void TarnNicImpl::ReleaseLease() {
  if (!nic_.configured.GetIpv4UseDhcp() && !nic_.configured.GetIpv6UseDhcp()) return;
  enterChange("ReleaseLease", nic_.name).Network().ReleaseLease(nic_.name);
}

void TarnNicImpl::Disable() {
  enterChange("Disable", nic_.name).Network().SetNicUp(nic_.name, false);
}

void TarnNicImpl::Enable() {
  enterChange("Enable", nic_.name).Network().SetNicUp(nic_.name, true);
}

void TarnNicImpl::Restart() {
  try {
    ReleaseLease();
    Disable();
  } catch (const HostCtlException&) {
    try {
      Enable();
    } catch (const HostCtlException&) {
      // Why it is not restarted matters more.
    }
    throw;
  }
  Enable();
}

void TarnNicImpl::SetMacAddressFromPnic(const Pnic* pnic) {
  const PnicRecord& record = pnic->GetRecord();
  enterChange("SetMacAddressFromPnic", nic_.name, record.name)
      .Network()
      .WriteMacAddress(nic_.name, record.macAddress);
}

void TarnNicImpl::SetMacAddress(const std::string& macAddress) {
  enterChange("SetMacAddress", nic_.name, macAddress)
      .Network()
      .WriteMacAddress(nic_.name, macAddress);
}

void TarnNicImpl::Migrate(const std::string& switchName, const std::string& portGroup) {
  enterChange("Migrate", nic_.name, switchName, portGroup)
      .Network()
      .MoveNic(nic_.name, {switchName, portGroup});
}

void TarnNicImpl::MoveToHostLocalPort(const HostLocalPort& port) {
  std::string uplinks;
  for (const auto& uplink : port.uplinks) uplinks += " " + uplink;
  enterChange("MoveToHostLocalPort", nic_.name, port.name, std::to_string(port.vlanId),
              (port.unblocked ? "unblocked" : "as-before") + uplinks)
      .Network()
      .MoveNicToPort(nic_.name, port);
}

}  // namespace TarnCtl::Network
