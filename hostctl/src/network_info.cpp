// SPDX-License-Identifier: MIT
#include "hostctl/lib/exception.h"
#include "hostseam/management_nic.h"
#include "src/enter.h"
#include "src/tarn_nic_impl.h"
#include "tarnctl/network/network_info_impl.h"

namespace TarnCtl::Network {

using namespace HostCtl::Network;

void NetworkInfoImpl::UpdateManagementInterface() {
  auto chosen = HostSeam::chooseManagementNic(enter("UpdateManagementInterface").ReadKernelNics());
  management_ = chosen ? std::make_unique<TarnNicImpl>(std::move(*chosen)) : nullptr;
}

std::unique_ptr<TarnNic> NetworkInfoImpl::GetManagementInterface() {
  enter("GetManagementInterface");
  return std::move(management_);
}

std::vector<std::unique_ptr<TarnNic>> NetworkInfoImpl::GetTarnNics() {
  std::vector<std::unique_ptr<TarnNic>> nics;
  for (auto& nic : enter("GetTarnNics").ReadKernelNics())
    nics.push_back(std::make_unique<TarnNicImpl>(std::move(nic)));
  return nics;
}

std::vector<PnicRecord> NetworkInfoImpl::GetPnics() {
  return enter("GetPnics").ReadPnics();
}

bool NetworkInfoImpl::IsTarnIpv6Enabled() {
  return enter("IsTarnIpv6Enabled").ReadIpv6Enabled();
}

void NetworkInfoImpl::SetTarnIpv6Enabled(bool enabled) {
  enterChange("SetTarnIpv6Enabled", onOff(enabled)).Network().WriteIpv6Enabled(enabled);
}

void NetworkInfoImpl::DisableNetDumper() {
  enterChange("DisableNetDumper").Network().DisableNetDumper();
}

void NetworkInfoImpl::ClearNetworkConfig() {
  enterChange("ClearNetworkConfig").Network().ClearConfiguration();
}

void NetworkInfoImpl::AutoConfigNetwork() {
  enterChange("AutoConfigNetwork").Network().AutoConfigure();
}

PnicImpl::PnicImpl(const std::string& name) {
  record_.name = name;
}

void PnicImpl::Refresh() {
  for (auto& pnic : enter("Pnic.Refresh").ReadPnics())
    if (pnic.name == record_.name) {
      record_ = std::move(pnic);
      return;
    }
  throw HostCtl::Lib::HostCtlException("Pnic", record_.name, "there is no such adapter");
}

}  // namespace TarnCtl::Network
