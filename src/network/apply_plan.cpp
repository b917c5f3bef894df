// SPDX-License-Identifier: MIT
#include "network/apply_plan.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "network/pending_changes.h"

namespace Kiva {

using HostCtl::Network::ConnecteeType;
using HostCtl::Network::IpAddress;
using HostCtl::Network::IpConfig;
using HostCtl::Network::LeaseRenewal;

namespace {

using namespace Apply;

constexpr auto kStandard = ConnecteeType::StandardPortGroup;
constexpr const char* kDnsFailed = "Setting DNS failed: ";

bool contains(const std::vector<std::string>& all, const std::string& one) {
  return std::find(all.begin(), all.end(), one) != all.end();
}

// Parted by blanks and commas.
std::vector<std::string> domainsIn(std::string suffixes) {
  std::replace(suffixes.begin(), suffixes.end(), ',', ' ');
  std::istringstream words(suffixes);
  return {std::istream_iterator<std::string>(words), {}};
}

bool isSet(const IpAddress& server) {
  return std::visit([](const auto& address) { return !address.IsEmpty(); }, server);
}

/// What a pass does to IPv4.
enum class Ipv4Change { Nothing, ToDhcp, ToNone, ToStatic };

Ipv4Change ipv4ChangeOf(const IpConfig& pending, const HostNetwork::IpConfigs& now) {
  if (pending.GetIpv4UseNone()) return Ipv4Change::ToNone;
  if (pending.GetIpv4UseDhcp())
    return now.configured.GetIpv4UseDhcp() ? Ipv4Change::Nothing : Ipv4Change::ToDhcp;
  const bool same = now.configured.GetIpv4UseStatic() &&
                    now.running.GetIpv4Address() == pending.GetIpv4Address() &&
                    now.running.GetIpv4Netmask() == pending.GetIpv4Netmask();
  return same ? Ipv4Change::Nothing : Ipv4Change::ToStatic;
}

/// Collects the steps of one pass; its members are the pass's sections, in the order of their call.
class Planner {
 public:
  Planner(const PendingNetwork& pending, const HostNetwork& host)
      : pending_(pending), host_(host) {}

  Plan Make() {
    if (host_.connection != ConnecteeType::DistributedPort) PortGroup();
    Ipv4();
    Ipv6();
    IpConfiguration();
    Gateways();
    Renewal();
    Restart();
    if (!plan_.dnsFromDhcp) NamesAndServers();
    Suffixes();
    if (isIpv6Toggled(pending_)) Add({.call = RebootHost{}});
    return std::move(plan_);
  }

 private:
  void Add(Step step) { plan_.steps.push_back(std::move(step)); }
  void AddDns(std::string log, Call call) {
    Add({Condition::DnsUnbroken, std::move(log), std::move(call), kDnsFailed});
  }
  template <typename Wanted>
  bool Has() const {
    return std::any_of(plan_.steps.begin(), plan_.steps.end(),
                       [](const Step& step) { return std::holds_alternative<Wanted>(step.call); });
  }
  bool Ipv4Changed() const { return ipv4_ == Ipv4Change::ToNone || ipv4_ == Ipv4Change::ToStatic; }
  const char* IpFailure() const;

  void PortGroup() {
    Adapters();
    MacAddress();
    Vlan();
  }
  void Adapters();
  void MacAddress();
  void Vlan();
  void Ipv4();
  void Ipv6();
  void IpConfiguration();
  void Gateways();
  void Renewal();
  void Restart();
  void NamesAndServers();
  void Suffixes();

  const PendingNetwork& pending_;
  const HostNetwork& host_;
  Plan plan_;
  Ipv4Change ipv4_ = Ipv4Change::Nothing;
  /// What the interface is given; absent when the host does not say what it has.
  std::optional<IpConfig> config_;
};

void Planner::Adapters() {
  std::string line = "Setting adapters to";
  for (const auto& pnic : pending_.adapters) line += " " + pnic;
  Add({.log = line});
  if (!host_.uplinks.value) {
    Add({.call = LogTrouble{host_.uplinks.trouble}});
    return;
  }
  for (const auto& pnic : *host_.uplinks.value)
    if (!contains(pending_.adapters, pnic)) Add({.call = RemoveUplink{pnic}});
  for (const auto& pnic : pending_.adapters)
    if (!contains(*host_.uplinks.value, pnic)) Add({.call = AddUplink{pnic}});
}

// The primary adapter's. Uplinks that are not known may have any.
void Planner::MacAddress() {
  const auto current = host_.uplinks.value.value_or(std::vector<std::string>());
  const auto& selected = pending_.adapters;
  if (selected.empty() || (!current.empty() && current.front() == selected.front())) return;
  const bool onStandardSwitch = host_.connection.value_or(kStandard) == kStandard;
  Add({.call = TakeMacAddress{selected.front(), onStandardSwitch},
       .failure = "Setting mac address of pnic failed: "});
}

void Planner::Vlan() {
  if (!host_.vlanId.value)
    Add({.call = LogTrouble{host_.vlanId.trouble}});
  else if (*host_.vlanId.value != pending_.vlanId)
    Add({.call = SetVlanId{pending_.vlanId}});
}

void Planner::Ipv4() {
  if (!host_.ipConfigs.value) {
    Add({.call = Fail{host_.ipConfigs.trouble}, .failure = IpFailure()});
    return;
  }
  const IpConfig& pending = pending_.ipConfig;
  const std::string on = " on " + host_.interface;
  config_ = host_.ipConfigs.value->configured;
  ipv4_ = ipv4ChangeOf(pending, *host_.ipConfigs.value);
  if (pending.GetIpv4UseDhcp()) config_->SetUseDhcp(true);
  switch (ipv4_) {
    case Ipv4Change::Nothing:
      break;
    case Ipv4Change::ToDhcp:
      Add({.log = "Switching to DHCP" + on});
      break;
    case Ipv4Change::ToNone:
      Add({.log = "Setting ipv4 configuration to none" + on});
      config_->SetUseDhcp(false, true);
      break;
    case Ipv4Change::ToStatic:
      Add({.log = "Setting ipv4 configuration to " + pending.GetIpv4Address().GetStringAddress() +
                  " " + pending.GetIpv4Netmask().GetStringAddress() + on});
      config_->SetUseDhcp(false, false);
      config_->SetIpv4Address(pending.GetIpv4Address());
      config_->SetIpv4Netmask(pending.GetIpv4Netmask());
      break;
  }
}

void Planner::Ipv6() {
  Add({.call = SetKernelIpv6{pending_.ipv6Enabled},
       .failure = "Setting ipv6 configuration failed: "});
  if (!pending_.ipv6Enabled) return;
  Add({.log = "Setting ipv6 configuration"});
  if (!config_) return;
  if (!pending_.ipv6EnabledAtStart) config_->EnableIpv6();
  config_->SetUseIpv6Dhcp(pending_.ipConfig.GetIpv6UseDhcp());
  config_->SetUseIpv6RouterAdvertised(pending_.ipConfig.GetIpv6UseRouterAdvertisement());
  config_->SetIpv6Networks(pending_.ipConfig.GetIpv6Networks());
}

const char* Planner::IpFailure() const {
  if (!pending_.ipv6Enabled) return "Setting ip configuration failed: ";
  return ipv4_ == Ipv4Change::Nothing ? "Setting ipv6 configuration failed: "
                                      : "Setting ip/ipv6 configuration failed: ";
}

// The kernel is asked only where its answer counts.
void Planner::IpConfiguration() {
  plan_.dnsFromDhcp = pending_.ipConfig.GetDnsFromDhcp();
  if (!config_) return;
  if (plan_.dnsFromDhcp && !config_->GetIpv4UseDhcp() && config_->GetIpv6UseDhcp() &&
      !host_.ipv6Enabled.value) {
    Add({.call = Fail{host_.ipv6Enabled.trouble}, .failure = IpFailure()});
  } else {
    const bool asksDhcp6 = config_->GetIpv6UseDhcp() && host_.ipv6Enabled.value.value_or(false);
    plan_.dnsFromDhcp = plan_.dnsFromDhcp && (config_->GetIpv4UseDhcp() || asksDhcp6);
    config_->SetDhcpDns(plan_.dnsFromDhcp);
    Add({.call = SetIpConfig{*config_}, .failure = IpFailure()});
  }
  if (Ipv4Changed()) Add({.call = Repaint{}});
}

void Planner::Gateways() {
  const std::string failure = "Setting default gateway failed: ";
  const auto gateway = pending_.ipConfig.GetIpv4Gateway();
  if (config_ && config_->GetIpv4UseStatic()) {
    if (!host_.ipv4Gateway.value)
      Add({.call = Fail{host_.ipv4Gateway.trouble}, .failure = failure});
    else if (Ipv4Changed() || *host_.ipv4Gateway.value != gateway)
      Add({.log = "Setting default gateway to " + gateway.GetStringAddress(),
           .call = SetIpv4Gateway{gateway},
           .failure = failure});
  }
  const auto& gateway6 = pending_.ipConfig.GetIpv6Gateway();
  if (pending_.ipv6Enabled && pending_.ipv6GatewaySet)
    Add({.log = "Setting default ipv6 gateway to " + gateway6.GetScopedAddress(),
         .call = SetIpv6Gateway{gateway6},
         .failure = "Setting default ipv6 gateway failed: "});
}

// Other adapters may lead to another DHCP server. Without IPv6, the name servers that it gave are
// to be asked for anew.
void Planner::Renewal() {
  const IpConfig& pending = pending_.ipConfig;
  const IpConfig now = host_.ipConfigs.value ? host_.ipConfigs.value->configured : IpConfig();
  const bool stays4 = now.GetIpv4UseDhcp() && pending.GetIpv4UseDhcp();
  const bool stays6 = pending_.ipv6Enabled && now.GetIpv6UseDhcp() && pending.GetIpv6UseDhcp();
  const bool anyway = !pending_.ipv6Enabled && pending_.ipv6EnabledAtStart &&
                      pending.GetIpv4UseDhcp() && pending.GetDnsFromDhcp();
  const bool mayChangeAdapters = Has<RemoveUplink>() || Has<AddUplink>();
  if (!anyway && !(mayChangeAdapters && (stays4 || stays6))) return;
  Add({anyway ? Condition::Always : Condition::AdaptersChanged,
       "Renew DHCP lease on " + host_.interface,
       RenewLease{stays6 ? LeaseRenewal::Ipv4AndIpv6 : LeaseRenewal::Ipv4},
       "Renewing DHCP lease failed: "});
}

void Planner::Restart() {
  if (!Has<SetVlanId>()) return;
  Add({Condition::VlanChanged, "Changed vlan, restarting management interface", RestartInterface{},
       "Restarting management interface failed: "});
}

void Planner::NamesAndServers() {
  const std::string& name = pending_.hostname;
  const auto point = name.find('.');
  AddDns("Setting hostname to " + name,
         point == name.npos ? Call(SetHostname{name})
                            : Call(SetFqdn{name.substr(0, point), name.substr(point + 1)}));
  AddDns("Setting nameservers to " + toString(pending_.primaryDns) + " " +
             toString(pending_.alternateDns),
         RemoveNameServers{});
  for (const auto& server : {pending_.primaryDns, pending_.alternateDns})
    if (server && isSet(*server)) AddDns({}, AddNameServer{*server});
}

void Planner::Suffixes() {
  AddDns("Setting suffixes to " + pending_.suffixes, ResetSearchDomains{});
  for (auto& domain : domainsIn(pending_.suffixes)) AddDns({}, AddSearchDomain{std::move(domain)});
  AddDns({}, SaveDns{});
}

}  // namespace

Apply::Plan planApply(const PendingNetwork& pending, const HostNetwork& host) {
  return Planner(pending, host).Make();
}

}  // namespace Kiva
