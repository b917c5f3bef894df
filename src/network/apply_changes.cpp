// SPDX-License-Identifier: MIT
#include "network/apply_changes.h"

#include "core/key_wait.h"
#include "core/log.h"
#include "core/screen.h"
#include "hostctl/lib/exception.h"
#include "network/apply_plan.h"
#include "system/going_down_dialog.h"
#include "tarnctl/network/network_info_impl.h"
#include "ui/markup_text.h"
#include "ui/message_dialog.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::ConnecteeType;
using HostCtl::Network::kDefaultStack;
using HostCtl::Network::TarnNic;

namespace {

template <typename Read>
auto asked(const Read& read) -> Answer<decltype(read())> {
  try {
    return {read()};
  } catch (const HostCtlException& e) {
    return {{}, e.what()};
  }
}

// What is not known here has been logged, or is trouble of the reads behind it.
std::optional<ConnecteeType> connectionOf(const TarnNic& interface) {
  if (isOnDistributedSwitch()) return ConnecteeType::DistributedPort;
  return asked([&] { return interface.GetConnectionPoint().type; }).value;
}

HostNetwork readHost(TarnNic& interface) {
  HostNetwork host;
  host.ipConfigs = asked([&] {
    interface.Refresh();
    return HostNetwork::IpConfigs{interface.GetConfiguredIpConfig(), interface.GetIpConfig()};
  });
  host.interface = interface.GetInterfaceName();
  host.connection = connectionOf(interface);
  if (host.connection != ConnecteeType::DistributedPort) {
    host.uplinks = readUplinks(interface);
    host.vlanId = readVlanId(interface);
  }
  host.ipv6Enabled = asked([] { return TarnCtl::Network::NetworkInfoImpl().IsTarnIpv6Enabled(); });
  host.ipv4Gateway = asked(
      [] { return TarnCtl::Network::RoutingInfoImpl(kDefaultStack).GetTarnDefaultGateway(); });
  return host;
}

/// One pass: what earlier steps brought about, and what the steps work on.
class Pass {
 public:
  Pass(Frame& owner, TarnNic& interface, const std::function<void()>& repaint)
      : owner_(owner), interface_(interface), repaint_(repaint) {}

  void CarryOut(const Apply::Step& step);
  /// Throws the idle time-out that ended an unread message.
  void End() const {
    if (timedOut_) throw KivaTimeout{};
  }

 private:
  bool Holds(Apply::Condition condition) const;
  void Report(const std::string& text);

  void Do(const Apply::LogOnly&) {}
  void Do(const Apply::LogTrouble& call) { logError("%s", call.text.c_str()); }
  void Do(const Apply::Fail& call) { throw HostCtlException(call.trouble); }
  void Do(const Apply::RemoveUplink& call) {
    if (removeUplink(interface_, call.pnic)) adaptersChanged_ = true;
  }
  void Do(const Apply::AddUplink& call) {
    if (addUplink(interface_, call.pnic)) adaptersChanged_ = true;
  }
  void Do(const Apply::TakeMacAddress& call);
  void Do(const Apply::SetVlanId& call) { vlanChanged_ = setVlanId(interface_, call.vlanId); }
  void Do(const Apply::SetKernelIpv6& call) {
    TarnCtl::Network::NetworkInfoImpl().SetTarnIpv6Enabled(call.enabled);
  }
  void Do(const Apply::SetIpConfig& call) { interface_.SetIpConfig(call.config); }
  void Do(const Apply::Repaint&);
  void Do(const Apply::SetIpv4Gateway& call) {
    TarnCtl::Network::RoutingInfoImpl(kDefaultStack).SetTarnDefaultGateway(call.gateway, false);
  }
  void Do(const Apply::SetIpv6Gateway& call) {
    TarnCtl::Network::RoutingInfoImpl(kDefaultStack).SetIpv6TarnDefaultGateway(call.gateway);
  }
  void Do(const Apply::RenewLease& call) { interface_.RenewLease(call.what); }
  void Do(const Apply::RestartInterface&);
  void Do(const Apply::SetHostname& call) { Dns().SetHostname(call.name, false); }
  void Do(const Apply::SetFqdn& call) { Dns().SetFqdn(call.host, false, call.domain); }
  void Do(const Apply::RemoveNameServers&) { Dns().RemoveNameServers(); }
  void Do(const Apply::AddNameServer& call) { Dns().AddUserNameServer(call.server); }
  void Do(const Apply::ResetSearchDomains&) { Dns().SetSearchDomainsString(Dns().GetDomain()); }
  void Do(const Apply::AddSearchDomain& call) { Dns().AddUserSearchDomain(call.domain); }
  void Do(const Apply::SaveDns&) { Dns().SaveConfig(); }
  void Do(const Apply::RebootHost&) { rebootHost(owner_, VmStop::Graceful); }

  HostCtl::Network::DnsConfig& Dns();

  Frame& owner_;
  TarnNic& interface_;
  const std::function<void()>& repaint_;
  std::optional<TarnCtl::Network::DnsConfigImpl> dns_;
  bool adaptersChanged_ = false;
  bool vlanChanged_ = false;
  bool dnsBroken_ = false;
  bool timedOut_ = false;
};

bool Pass::Holds(Apply::Condition condition) const {
  switch (condition) {
    case Apply::Condition::Always:
      return true;
    case Apply::Condition::AdaptersChanged:
      return adaptersChanged_;
    case Apply::Condition::VlanChanged:
      return vlanChanged_;
    case Apply::Condition::DnsUnbroken:
      return !dnsBroken_;
  }
  return false;
}

void Pass::CarryOut(const Apply::Step& step) {
  if (!Holds(step.when)) return;
  if (!step.log.empty()) logInfo("%s", step.log.c_str());
  try {
    std::visit([this](const auto& call) { Do(call); }, step.call);
  } catch (const HostCtlException& e) {
    if (step.when == Apply::Condition::DnsUnbroken) dnsBroken_ = true;
    if (!step.failure.empty()) Report(step.failure + e.what());
  }
}

// An operator who went away must not leave the host with half a configuration.
void Pass::Report(const std::string& text) {
  logError("%s", text.c_str());
  if (timedOut_) return;
  try {
    showMessage(owner_, TextId::kEnableManagementNetworkError, plainText(text));
    updateScreen();
  } catch (const KivaTimeout&) {
    timedOut_ = true;
  }
}

void Pass::Do(const Apply::TakeMacAddress& call) {
  TarnCtl::Network::PnicImpl pnic(call.pnic);
  pnic.Refresh();
  if (call.onStandardSwitch)
    interface_.SetMacAddressFromPnic(&pnic);
  else
    interface_.SetMacAddress(pnic.GetRecord().macAddress);
}

void Pass::Do(const Apply::Repaint&) {
  repaint_();
  updateScreen();
}

// The lease to give back is that of the configuration which has just been set.
void Pass::Do(const Apply::RestartInterface&) {
  interface_.Refresh();
  interface_.Restart();
}

HostCtl::Network::DnsConfig& Pass::Dns() {
  if (!dns_) dns_.emplace(kDefaultStack);
  return *dns_;
}

}  // namespace

bool applyChanges(Frame& owner, TarnNic& interface, PendingNetwork& pending,
                  const std::function<void()>& repaint) {
  updateScreen();
  const Apply::Plan plan = planApply(pending, readHost(interface));
  pending.ipConfig.SetDhcpDns(plan.dnsFromDhcp);
  Pass pass(owner, interface, repaint);
  for (const auto& step : plan.steps) pass.CarryOut(step);
  pass.End();
  return true;
}

}  // namespace Kiva
