// SPDX-License-Identifier: MIT
// What an apply pass does and in which order, for what an operator chose and what a host has.
#include "network/apply_plan.h"

#include <gtest/gtest.h>

#include "harness/hosts/machine.h"

using namespace Kiva;
using namespace HostCtl::Network;

namespace {

using Names = std::vector<std::string>;

std::string textOf(const IpConfig& config) {
  std::string text = HostLinux::ipv4Text(config);
  if (config.GetIpv6Enabled()) text += " v6";
  if (config.GetIpv6UseDhcp()) text += " dhcp6";
  if (config.GetIpv6UseRouterAdvertisement()) text += " ra";
  for (const auto& network : config.GetIpv6Networks()) text += " " + network.ToString();
  return text + (config.GetDnsFromDhcp() ? " dns" : "");
}

struct Described {
  using S = std::string;
  S operator()(const Apply::LogTrouble& call) { return "trouble " + call.text; }
  S operator()(const Apply::Fail& call) { return "fail" + call.trouble; }
  S operator()(const Apply::RemoveUplink& call) { return "remove " + call.pnic; }
  S operator()(const Apply::AddUplink& call) { return "add " + call.pnic; }
  S operator()(const Apply::TakeMacAddress& call) {
    return (call.onStandardSwitch ? "mac " : "set mac ") + call.pnic;
  }
  S operator()(const Apply::SetVlanId& call) { return "vlan " + std::to_string(call.vlanId); }
  S operator()(const Apply::SetKernelIpv6& call) { return call.enabled ? "on" : "off"; }
  S operator()(const Apply::SetIpConfig& call) { return textOf(call.config); }
  S operator()(const Apply::Repaint&) { return "repaint"; }
  S operator()(const Apply::RenewLease& call) {
    return call.what == LeaseRenewal::Ipv4 ? "renew" : "renew both";
  }
  S operator()(const Apply::RebootHost&) { return "reboot"; }
  S operator()(const auto&) { return ""; }
};

// What a step does, or else its log line, with its condition before. What failed stands behind it
// where that depends on the pass.
std::string textOf(const Apply::Step& step) {
  constexpr const char* kWhen[] = {"", "adapters? ", "vlan? ", "dns? "};
  std::string text = std::visit(Described(), step.call);
  if (text.empty()) text = step.log;
  const auto end = step.failure.find(" configuration failed: ");
  if (end != step.failure.npos) text += " !" + step.failure.substr(8, end - 8);
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
  pass.Ip() = HostLinux::ipConfig("dhcp dhcp6 dns");
  pass.pending.ipv6Enabled = pass.pending.ipv6EnabledAtStart = true;
  pass.pending.adapters = {"pnic0", "pnic1"};
  pass.pending.hostname = "alpha";
  pass.host = {"tarn0", kStandard, {pass.pending.adapters}, {0}, {}, {true}, {Ipv4Address()}};
  pass.host.ipConfigs.value = {pass.Ip(), pass.Ip()};
  return pass;
}

void chooseStatic(Pass& pass) {
  pass.Ip() = HostLinux::ipConfig("10.0.0.9/24 dhcp6 dns");
}

// The same with a static address and name servers of its own.
Pass unchangedStatic() {
  Pass pass = unchanged();
  pass.Ip() = HostLinux::ipConfig("10.0.0.9/24 dhcp6");
  pass.Now() = {pass.Ip(), pass.Ip()};
  return pass;
}

using P = Pass&;
/// A change to a pass, and the steps that the plan did not have without it.
using Case = std::pair<void (*)(P), std::string>;

void expectSteps(const Pass& base, const std::vector<Case>& cases) {
  const Names before = planOf(base);
  for (const auto& [change, expected] : cases) {
    Pass pass = base;
    change(pass);
    std::string steps;
    for (const auto& step : planOf(pass))
      if (std::find(before.begin(), before.end(), step) == before.end()) steps += step + ", ";
    EXPECT_EQ(steps, expected);
  }
}

const Answer<Names> kNoUplinks{{}, "x"};
const std::string kLeased = "0.0.0.0 0.0.0.0 0.0.0.0 dhcp v6",
                  kFixed = "10.0.0.9 255.255.255.0 0.0.0.0 static v6";

TEST(ApplyPlan, AdaptersAndVlan) {
  EXPECT_EQ(planOf(unchanged()),
            (Names{"Setting adapters to pnic0 pnic1", "on !ipv6", "Setting ipv6 configuration",
                   kLeased + " dhcp6 dns !ipv6", "dns? Setting suffixes to ", "dns? "}));
  const std::string to = "Setting adapters to", renew = "adapters? renew both, ",
                    mac0 = "mac pnic0, ", mac1 = "mac pnic1, ";
  expectSteps(
      unchanged(),
      {{[](P p) { p.pending.adapters = {}; }, to + ", remove pnic0, remove pnic1, " + renew},
       {[](P p) { p.pending.adapters = Names(1, "pnic1"); },
        to + " pnic1, remove pnic0, " + mac1 + renew},
       {[](P p) { std::swap(p.pending.adapters[0], p.pending.adapters[1]); },
        to + " pnic1 pnic0, " + mac1},
       {[](P p) { p.host.uplinks.value->clear(); }, "add pnic0, add pnic1, " + mac0 + renew},
       {[](P p) { p.host.uplinks = kNoUplinks; }, "trouble x, " + mac0},
       {[](P p) { p.host.uplinks = kNoUplinks, p.host.connection = ConnecteeType::Opaque; },
        "trouble x, set " + mac0},
       {[](P p) { p.pending.vlanId = 4095; },
        "vlan 4095, vlan? Changed vlan, restarting management interface, "},
       {[](P p) { p.host.vlanId.value.reset(); }, "trouble , "},
       {[](P p) { p.pending.vlanId = 7, p.host.connection = ConnecteeType::DistributedPort; },
        ""}});
}

TEST(ApplyPlan, Ipv4) {
  const std::string set = "Setting ipv4 configuration to ",
                    gateway = "Setting default gateway to 0.0.0.0, ",
                    to = set + "10.0.0.9 255.255.255.0 on tarn0, " + kFixed + " dhcp6",
                    there = " !ip/ipv6, repaint, ";
  expectSteps(unchanged(), {{[](P p) { p.Ip().SetUseDhcp(false, true); },
                             set + "none on tarn0, none v6 dhcp6 dns" + there},
                            {chooseStatic, to + " dns" + there + gateway},
                            {[](P p) { p.host.ipv4Gateway.value.reset(); }, ""}});
  expectSteps(
      unchangedStatic(),
      {{[](P p) { p.Ip().SetUseDhcp(true); },
        "Switching to DHCP on tarn0, 10.0.0.9 255.255.255.0 0.0.0.0 dhcp v6 dhcp6 !ip/ipv6, "},
       {[](P p) { p.Now().running.SetIpv4Address(Ipv4Address(1)); }, to + there + gateway},
       {[](P p) { p.Now().running.SetIpv4Netmask(Ipv4Address(1)); }, to + there + gateway},
       {[](P p) { p.Now().configured.SetUseDhcp(true); }, to + there + gateway},
       {[](P p) { p.host.ipv4Gateway.value = Ipv4Address(1); }, gateway},
       {[](P p) { p.host.ipv4Gateway.value.reset(); }, "fail, "}});
}

TEST(ApplyPlan, Ipv6AndRenewal) {
  expectSteps(
      unchanged(),
      {{[](P p) { p.pending.ipv6Enabled = false; },
        "off !ipv6, " + kLeased + " dhcp6 dns !ip, renew, reboot, "},
       {[](P p) { p.pending.ipv6Enabled = p.pending.ipv6EnabledAtStart = false; },
        "off !ipv6, " + kLeased + " dhcp6 dns !ip, "},
       {[](P p) { p.pending.adapters.pop_back(), p.Ip().SetUseIpv6Dhcp(false); },
        "Setting adapters to pnic0, remove pnic1, " + kLeased + " dns !ipv6, adapters? renew, "},
       {[](P p) { p.Ip().SetUseIpv6RouterAdvertised(true); }, kLeased + " dhcp6 ra dns !ipv6, "},
       {[](P p) { p.Ip().SetIpv6Networks({Ipv6Network()}); }, kLeased + " dhcp6 ::/64 dns !ipv6, "},
       {[](P p) { p.Now().configured = {}, p.pending.ipv6EnabledAtStart = false; },
        "Switching to DHCP on tarn0, " + kLeased + " dhcp6 dns !ip/ipv6, reboot, "},
       {[](P p) { p.Now().configured = {}; },
        "Switching to DHCP on tarn0, " + kLeased + " dhcp6 dns !ip/ipv6, "},
       {[](P p) { p.pending.ipv6GatewaySet = true; }, "Setting default ipv6 gateway to ::, "}});
}

TEST(ApplyPlan, NameServersComeFromDhcpOnlyWhereItIsAsked) {
  const std::string names =
      " !ipv6, dns? Setting hostname to alpha, dns? Setting nameservers to 0.0.0.0 , ";
  Pass base = unchangedStatic();
  base.pending.primaryDns = Ipv4Address();
  base.Ip().SetDhcpDns(true);
  EXPECT_TRUE(planApply(base.pending, base.host).dnsFromDhcp);
  expectSteps(base, {{[](P p) { p.Ip().SetUseIpv6Dhcp(false); }, kFixed + names},
                     {[](P p) { p.host.ipv6Enabled.value = false; }, kFixed + " dhcp6" + names},
                     {[](P p) { p.host.ipv6Enabled.value.reset(); }, "fail !ipv6, "},
                     {[](P p) { p.host.ipConfigs.value.reset(); }, "fail !ipv6, "}});
}

}  // namespace
