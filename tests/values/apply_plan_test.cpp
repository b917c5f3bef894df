// SPDX-License-Identifier: MIT
// What an apply pass does and in which order, for what an operator chose and what a host has.
#include "network/apply_plan.h"

#include <gtest/gtest.h>

using namespace Kiva;
using namespace HostCtl::Network;

namespace {

using Names = std::vector<std::string>;

std::string show(const std::string& text) {
  return text;
}
std::string show(bool on) {
  return on ? "on" : "off";
}
std::string show(std::int16_t number) {
  return std::to_string(number);
}
std::string show(const IpAddress& address) {
  return toString(address);
}
std::string show(LeaseRenewal what) {
  return what == LeaseRenewal::Ipv4 ? "4" : "4 6";
}
std::string show(const IpConfig& config) {
  std::string text = toString(config.GetIpv4Address()) + "/" + toString(config.GetIpv4Netmask());
  if (config.GetIpv4UseNone() || config.GetIpv4UseDhcp())
    text = config.GetIpv4UseNone() ? "none" : "dhcp";
  if (config.GetIpv6Enabled()) text += " v6";
  if (config.GetIpv6UseDhcp()) text += " dhcp6";
  if (config.GetIpv6UseRouterAdvertisement()) text += " ra";
  for (const auto& network : config.GetIpv6Networks()) text += " " + network.ToString();
  return text + (config.GetDnsFromDhcp() ? " dns" : "");
}

template <typename Call>
std::string fieldsOf(const Call& call) {
  if constexpr (std::is_empty_v<Call>) {
    return "";
  } else if constexpr (requires { Call{{}, {}}; }) {
    const auto& [one, two] = call;
    return " " + show(one) + " " + show(two);
  } else {
    const auto& [one] = call;
    return " " + show(one);
  }
}

// "log", "call" or "log: call", with the condition before and what failed behind.
std::string textOf(const Apply::Step& step) {
  constexpr const char* kWhen[] = {"", "adapters? ", "vlan? ", "dns? "};
  constexpr const char* kCalls[] = {"",      "trouble", "fail",   "remove",  "add",    "mac",
                                    "vlan",  "kernel6", "config", "repaint", "route",  "route6",
                                    "renew", "restart", "name",   "fqdn",    "forget", "server",
                                    "reset", "domain",  "save",   "reboot"};
  std::string text = step.log;
  if (step.call.index() != 0)
    text += (text.empty() ? "" : ": ") + std::string(kCalls[step.call.index()]);
  text += std::visit([](const auto& call) { return fieldsOf(call); }, step.call);
  if (!step.failure.empty()) text += " !" + step.failure.substr(0, step.failure.find(" failed: "));
  return kWhen[static_cast<int>(step.when)] + text;
}

constexpr auto kStandard = ConnecteeType::StandardPortGroup;

/// What an operator chose and what a host has.
struct Pass {
  PendingNetwork pending;
  HostNetwork host;
  IpConfig& Ip() { return pending.ipConfig; }
  HostNetwork::IpConfigs& Now() { return *host.ipConfigs.value; }
};

Names planOf(const Pass& pass) {
  Names steps;
  for (const auto& step : planApply(pass.pending, pass.host).steps) steps.push_back(textOf(step));
  return steps;
}

// A host that has what is pending: DHCP of both kinds, two adapters.
Pass unchanged() {
  Pass pass;
  pass.Ip().SetUseDhcp(true);
  pass.Ip().EnableIpv6();
  pass.Ip().SetUseIpv6Dhcp(true);
  pass.Ip().SetDhcpDns(true);
  pass.pending.ipv6Enabled = pass.pending.ipv6EnabledAtStart = true;
  pass.pending.adapters = {"pnic0", "pnic1"};
  pass.pending.hostname = "alpha";
  pass.host = {"tarn0", kStandard, {pass.pending.adapters}, {0}, {}, {true}, {Ipv4Address()}};
  pass.host.ipConfigs.value = {pass.Ip(), pass.Ip()};
  return pass;
}

void chooseStatic(Pass& pass) {
  pass.Ip().SetUseDhcp(false);
  pass.Ip().SetIpv4Address(*Ipv4Address::FromString("10.0.0.9"));
  pass.Ip().SetIpv4Netmask(Ipv4Address::FromPrefix(24));
}

// The same with a static address and name servers of its own.
Pass unchangedStatic() {
  Pass pass = unchanged();
  chooseStatic(pass);
  pass.Ip().SetDhcpDns(false);
  pass.Now() = {pass.Ip(), pass.Ip()};
  return pass;
}

/// A change to a pass, and the steps that then stand where its plan is another.
struct Case {
  void (*change)(Pass& pass);
  Names difference;
};

void expectDifferences(const Pass& base, const std::vector<Case>& cases) {
  const Names all = planOf(base);
  for (const auto& [change, difference] : cases) {
    Pass pass = base;
    change(pass);
    const Names plan = planOf(pass);
    const auto start = std::mismatch(plan.begin(), plan.end(), all.begin(), all.end());
    const auto end = std::mismatch(plan.rbegin(), std::make_reverse_iterator(start.first),
                                   all.rbegin(), std::make_reverse_iterator(start.second));
    EXPECT_EQ(Names(start.first, end.first.base()), difference);
  }
}

const Answer<Names> kNoUplinks{{}, "x"};
const std::string kIp6Failed = " !Setting ipv6 configuration",
                  kIpFailed = " !Setting ip configuration",
                  kBothFailed = " !Setting ip/ipv6 configuration", kDhcp = "config dhcp v6 dhcp6",
                  kRenew = "Renew DHCP lease on tarn0: renew 4",
                  kRenewFailed = " !Renewing DHCP lease", kOn6 = "kernel6 on" + kIp6Failed,
                  kOff6 = "kernel6 off" + kIp6Failed, kLog6 = "Setting ipv6 configuration",
                  kStatic = "config 10.0.0.9/255.255.255.0 v6 dhcp6",
                  kNoDomains = "dns? Setting suffixes to : reset !Setting DNS",
                  kSave = "dns? save !Setting DNS";

TEST(ApplyPlan, AnIdlePassStillTellsTheHostWhatItAlwaysTells) {
  const Names steps = {"Setting adapters to pnic0 pnic1", kOn6,       kLog6,
                       kDhcp + " dns" + kIp6Failed,       kNoDomains, kSave};
  EXPECT_EQ(planOf(unchanged()), steps);
}

TEST(ApplyPlan, AdaptersAndVlan) {
  const std::string to = "Setting adapters to", failed = " !Setting mac address of pnic",
                    mac0 = "mac pnic0 on" + failed, mac1 = "mac pnic1 on" + failed,
                    ip = kDhcp + " dns" + kIp6Failed,
                    renew = "adapters? " + kRenew + " 6" + kRenewFailed,
                    restart =
                        "vlan? Changed vlan, restarting management interface: restart !Restarting "
                        "management interface";
  expectDifferences(
      unchanged(),
      {{[](Pass& p) { p.pending.adapters = {}; },
        {to, "remove pnic0", "remove pnic1", kOn6, kLog6, ip, renew}},
       {[](Pass& p) { p.pending.adapters = Names(1, "pnic1"); },
        {to + " pnic1", "remove pnic0", mac1, kOn6, kLog6, ip, renew}},
       {[](Pass& p) {
          p.pending.adapters = Names({"pnic1", "pnic0"});
        },
        {to + " pnic1 pnic0", mac1}},
       {[](Pass& p) { p.host.uplinks.value->clear(); },
        {"add pnic0", "add pnic1", mac0, kOn6, kLog6, ip, renew}},
       {[](Pass& p) { p.host.uplinks = kNoUplinks; }, {"trouble x", mac0}},
       {[](Pass& p) { p.host.uplinks = kNoUplinks, p.host.connection = ConnecteeType::Opaque; },
        {"trouble x", "mac pnic0 off" + failed}},
       {[](Pass& p) { p.host.uplinks = kNoUplinks, p.host.connection = {}; }, {"trouble x", mac0}},
       {[](Pass& p) { p.pending.vlanId = 4095; }, {"vlan 4095", kOn6, kLog6, ip, restart}},
       {[](Pass& p) { p.host.vlanId.value.reset(); }, {"trouble "}}});
  Pass distributed = unchanged();
  distributed.pending.vlanId = 7;
  distributed.host.connection = ConnecteeType::DistributedPort;
  EXPECT_EQ(planOf(distributed), (Names{kOn6, kLog6, ip, kNoDomains, kSave}));
}

TEST(ApplyPlan, Ipv4) {
  const std::string set = "Setting ipv4 configuration to 10.0.0.9 255.255.255.0 on tarn0",
                    failed = " !Setting default gateway",
                    route = "Setting default gateway to 0.0.0.0: route 0.0.0.0" + failed;
  const Names readdressed = {set, kOn6, kLog6, kStatic + kBothFailed, "repaint", route};
  expectDifferences(
      unchanged(),
      {{[](Pass& p) { p.Ip().SetUseDhcp(false, true); },
        {"Setting ipv4 configuration to none on tarn0", kOn6, kLog6,
         "config none v6 dhcp6 dns" + kBothFailed, "repaint"}},
       {chooseStatic, {set, kOn6, kLog6, kStatic + " dns" + kBothFailed, "repaint", route}},
       {[](Pass& p) { p.host.ipv4Gateway.value.reset(); }, {}}});
  expectDifferences(unchangedStatic(),
                    {{[](Pass& p) { p.Ip().SetUseDhcp(true); },
                      {"Switching to DHCP on tarn0", kOn6, kLog6, kDhcp + kBothFailed}},
                     {[](Pass& p) { p.Now().running.SetIpv4Address(Ipv4Address(1)); }, readdressed},
                     {[](Pass& p) { p.Now().running.SetIpv4Netmask(Ipv4Address(1)); }, readdressed},
                     {[](Pass& p) { p.Now().configured.SetUseDhcp(true); }, readdressed},
                     {[](Pass& p) { p.host.ipv4Gateway.value = Ipv4Address(1); }, {route}},
                     {[](Pass& p) { p.host.ipv4Gateway.value.reset(); }, {"fail " + failed}}});
}

TEST(ApplyPlan, Ipv6AndRenewal) {
  expectDifferences(
      unchanged(),
      {{[](Pass& p) { p.pending.ipv6Enabled = false; },
        {kOff6, kDhcp + " dns" + kIpFailed, kRenew + kRenewFailed, kNoDomains, kSave, "reboot"}},
       {[](Pass& p) { p.pending.ipv6Enabled = p.pending.ipv6EnabledAtStart = false; },
        {kOff6, kDhcp + " dns" + kIpFailed}},
       {[](Pass& p) { p.Ip().SetUseIpv6Dhcp(false), p.pending.adapters = Names(1, "pnic0"); },
        {"Setting adapters to pnic0", "remove pnic1", kOn6, kLog6,
         "config dhcp v6 dns" + kIp6Failed, "adapters? " + kRenew + kRenewFailed}},
       {[](Pass& p) {
          p.Ip().SetUseIpv6RouterAdvertised(true),
              p.Ip().SetIpv6Networks({*Ipv6Network::FromString("fd00::9/64")});
        },
        {"config dhcp v6 dhcp6 ra fd00::9/64 dns" + kIp6Failed}},
       {[](Pass& p) { p.Now().configured = {}, p.pending.ipv6EnabledAtStart = false; },
        {"Switching to DHCP on tarn0", kOn6, kLog6, kDhcp + " dns" + kBothFailed, kNoDomains, kSave,
         "reboot"}},
       {[](Pass& p) {
          p.pending.ipv6GatewaySet = true,
          p.Ip().SetIpv6Gateway(*Ipv6Address::FromString("fe80::1%tarn0"));
        },
        {"Setting default ipv6 gateway to fe80::1%tarn0: route6 fe80::1%tarn0 !Setting default "
         "ipv6 gateway"}}});
}

TEST(ApplyPlan, NamesServersAndDomains) {
  const std::string failed = " !Setting DNS", name = "dns? Setting hostname to alpha",
                    none = "config 10.0.0.9/255.255.255.0 v6";
  const Names names = {name + ": name alpha" + failed,
                       "dns? Setting nameservers to  : forget" + failed};
  Pass base = unchangedStatic();
  expectDifferences(base, {{[](Pass& p) { p.pending.hostname = "alpha.corp.lan"; },
                            {name + ".corp.lan: fqdn alpha corp.lan" + failed}},
                           {[](Pass& p) {
                              p.pending.primaryDns = parseIpAddress("fd00::53"),
                              p.pending.alternateDns = parseIpAddress("10.0.0.53");
                            },
                            {"dns? Setting nameservers to fd00::53 10.0.0.53: forget" + failed,
                             "dns? server fd00::53" + failed, "dns? server 10.0.0.53" + failed}},
                           {[](Pass& p) { p.pending.alternateDns = Ipv4Address(); },
                            {"dns? Setting nameservers to  0.0.0.0: forget" + failed}},
                           {[](Pass& p) { p.pending.suffixes = "a.lan, b.lan,,c.lan\td.lan"; },
                            {"dns? Setting suffixes to a.lan, b.lan,,c.lan\td.lan: reset" + failed,
                             "dns? domain a.lan" + failed, "dns? domain b.lan" + failed,
                             "dns? domain c.lan" + failed, "dns? domain d.lan" + failed}}});
  base.Ip().SetDhcpDns(true);
  EXPECT_TRUE(planApply(base.pending, base.host).dnsFromDhcp);
  expectDifferences(
      base,
      {{[](Pass& p) { p.Ip().SetUseIpv6Dhcp(false); }, {none + kIp6Failed, names[0], names[1]}},
       {[](Pass& p) { p.host.ipv6Enabled.value = false; },
        {none + " dhcp6" + kIp6Failed, names[0], names[1]}},
       {[](Pass& p) { p.host.ipv6Enabled.value.reset(); }, {"fail " + kIp6Failed}},
       {[](Pass& p) { p.host.ipConfigs.value.reset(); }, {"fail " + kIp6Failed, kOn6, kLog6}}});
}

}  // namespace
