// SPDX-License-Identifier: MIT
#include <chrono>

#include "hostctl/lib/exception.h"
#include "src/enter.h"
#include "src/management_nic.h"
#include "tarnctl/network/network_info_impl.h"

namespace TarnCtl::Network {

using namespace HostCtl::Network;

namespace {

class TarnNicImpl : public TarnNic {
 public:
  explicit TarnNicImpl(HostSeam::KernelNic nic) : nic_(std::move(nic)) {}
  std::string GetName() const override { return nic_.name; }
  bool IsStale() const override { return Clock::now() - readAt_ > kFreshFor; }
  void Refresh() override;
  IpConfig GetConfiguredIpConfig() const override {
    return enter("GetConfiguredIpConfig"), nic_.configured;
  }
  IpConfig GetIpConfig() const override { return enter("GetIpConfig"), nic_.running; }
  ConnectionPoint GetConnectionPoint() const override {
    return enter("GetConnectionPoint"), nic_.connection;
  }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::seconds kFreshFor{1};
  HostSeam::KernelNic nic_;
  Clock::time_point readAt_ = Clock::now();
};

void TarnNicImpl::Refresh() {
  for (auto& nic : enter("Refresh").ReadKernelNics())
    if (nic.name == nic_.name) nic_ = std::move(nic);
  readAt_ = Clock::now();
}

void checkStack(const std::string& operation, const std::string& stack) {
  enter(operation);
  if (stack != kDefaultStack)
    throw HostCtl::Lib::HostCtlException(operation, stack, "no such network stack");
}

}  // namespace

void NetworkInfoImpl::UpdateManagementInterface() {
  auto chosen = chooseManagementNic(enter("UpdateManagementInterface").ReadKernelNics());
  management_ = chosen ? std::make_unique<TarnNicImpl>(std::move(*chosen)) : nullptr;
}

std::unique_ptr<TarnNic> NetworkInfoImpl::GetManagementInterface() {
  enter("GetManagementInterface");
  return std::move(management_);
}

std::vector<Pnic> NetworkInfoImpl::GetPnics() {
  return enter("GetPnics").ReadPnics();
}

bool NetworkInfoImpl::IsTarnIpv6Enabled() {
  return enter("IsTarnIpv6Enabled").ReadIpv6Enabled();
}

struct DnsConfigImpl::State : HostSeam::DnsRecord {};

DnsConfigImpl::DnsConfigImpl(const std::string& stack) {
  checkStack("DnsConfig", stack);
}
DnsConfigImpl::~DnsConfigImpl() = default;

void DnsConfigImpl::Refresh() {
  state_ = std::make_unique<State>(State{enter("DnsConfig.Refresh").ReadDns()});
}

const DnsConfigImpl::State& DnsConfigImpl::Read() {
  if (!state_) Refresh();
  return *state_;
}

std::string DnsConfigImpl::GetHostname() {
  return enter("GetHostname"), Read().hostname;
}
std::string DnsConfigImpl::GetDomain() {
  return enter("GetDomain"), Read().domain;
}

std::vector<IpAddress> DnsConfigImpl::GetNameServers() {
  return enter("GetNameServers"), Read().nameServers;
}

std::vector<std::string> DnsConfigImpl::GetSearchDomains() {
  return enter("GetSearchDomains"), Read().searchDomains;
}

RoutingInfoImpl::RoutingInfoImpl(const std::string& stack) {
  checkStack("RoutingInfo", stack);
}

Ipv4Address RoutingInfoImpl::GetTarnDefaultGateway() {
  return enter("GetTarnDefaultGateway").ReadRouting().ipv4Gateway;
}

Ipv6Address RoutingInfoImpl::GetTarnIpv6DefaultGateway() {
  return enter("GetTarnIpv6DefaultGateway").ReadRouting().ipv6Gateway;
}

}  // namespace TarnCtl::Network
