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

// What the step does, or else its log line; the condition before, and behind it what failed where
// that depends on the pass. The other texts are for the screens' tests.
std::string textOf(const Apply::Step& step) {
  constexpr const char* kWhen[] = {"", "adapters? ", "vlan? ", "dns? "};
  constexpr const char* kCalls[] = {"",      "trouble", "fail",   "remove",  "add",     "mac",
                                    "vlan",  "kernel6", "config", "repaint", "gateway", "gateway6",
                                    "renew", "restart", "name",   "fqdn",    "forget",  "server",
                                    "reset", "domain",  "save",   "reboot"};
  std::string text = kCalls[step.call.index()] +
                     std::visit([](const auto& call) { return fieldsOf(call); }, step.call);
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

std::string joined(Names::const_iterator from, Names::const_iterator to) {
  std::string text;
  for (; from != to; ++from) text += (text.empty() ? "" : ", ") + *from;
  return text;
}

/// A change to a pass, and the steps that then stand where its plan is another.
struct Case {
  void (*change)(Pass& pass);
  std::string difference;
};
using P = Pass&;

void expectDifferences(const Pass& base, const std::vector<Case>& cases) {
  const Names all = planOf(base);
  for (const auto& [change, difference] : cases) {
    Pass pass = base;
    change(pass);
    const Names plan = planOf(pass);
    const auto start = std::mismatch(plan.begin(), plan.end(), all.begin(), all.end());
    const auto end = std::mismatch(plan.rbegin(), std::make_reverse_iterator(start.first),
                                   all.rbegin(), std::make_reverse_iterator(start.second));
    EXPECT_EQ(joined(start.first, end.first.base()), difference);
  }
}

const Answer<Names> kNoUplinks{{}, "x"};
const std::string kOn6 = "kernel6 on !ipv6, Setting ipv6 configuration, config ",
                  kIp = ", " + kOn6 + "dhcp v6 dhcp6 dns !ipv6",
                  kOff6 = "kernel6 off !ipv6, config ", kEnd = ", dns? reset, dns? save",
                  kStatic = "10.0.0.9/255.255.255.0 v6 dhcp6";

TEST(ApplyPlan, AdaptersAndVlan) {
  const Names idle = planOf(unchanged());
  EXPECT_EQ(joined(idle.begin(), idle.end()), "Setting adapters to pnic0 pnic1" + kIp + kEnd);
  const std::string to = "Setting adapters to", renew = kIp + ", adapters? renew 4 6";
  expectDifferences(
      unchanged(),
      {{[](P p) { p.pending.adapters = {}; }, to + ", remove pnic0, remove pnic1" + renew},
       {[](P p) { p.pending.adapters = Names(1, "pnic1"); },
        to + " pnic1, remove pnic0, mac pnic1 on" + renew},
       {[](P p) { std::swap(p.pending.adapters[0], p.pending.adapters[1]); },
        to + " pnic1 pnic0, mac pnic1 on"},
       {[](P p) { p.host.uplinks.value->clear(); }, "add pnic0, add pnic1, mac pnic0 on" + renew},
       {[](P p) { p.host.uplinks = kNoUplinks; }, "trouble x, mac pnic0 on"},
       {[](P p) { p.host.uplinks = kNoUplinks, p.host.connection = ConnecteeType::Opaque; },
        "trouble x, mac pnic0 off"},
       {[](P p) { p.host.uplinks = kNoUplinks, p.host.connection = {}; },
        "trouble x, mac pnic0 on"},
       {[](P p) { p.pending.vlanId = 4095; }, "vlan 4095" + kIp + ", vlan? restart"},
       {[](P p) { p.host.vlanId.value.reset(); }, "trouble "}});
  Pass distributed = unchanged();
  distributed.pending.vlanId = 7;
  distributed.host.connection = ConnecteeType::DistributedPort;
  EXPECT_EQ(planOf(distributed), Names(idle.begin() + 1, idle.end()));
}

TEST(ApplyPlan, Ipv4) {
  const std::string set = "Setting ipv4 configuration to ",
                    to = set + "10.0.0.9 255.255.255.0 on tarn0, " + kOn6 + kStatic,
                    readdressed = to + " !ip/ipv6, repaint, gateway 0.0.0.0";
  expectDifferences(unchanged(),
                    {{[](P p) { p.Ip().SetUseDhcp(false, true); },
                      set + "none on tarn0, " + kOn6 + "none v6 dhcp6 dns !ip/ipv6, repaint"},
                     {chooseStatic, to + " dns !ip/ipv6, repaint, gateway 0.0.0.0"},
                     {[](P p) { p.host.ipv4Gateway.value.reset(); }, ""}});
  expectDifferences(unchangedStatic(),
                    {{[](P p) { p.Ip().SetUseDhcp(true); },
                      "Switching to DHCP on tarn0, " + kOn6 + "dhcp v6 dhcp6 !ip/ipv6"},
                     {[](P p) { p.Now().running.SetIpv4Address(Ipv4Address(1)); }, readdressed},
                     {[](P p) { p.Now().running.SetIpv4Netmask(Ipv4Address(1)); }, readdressed},
                     {[](P p) { p.Now().configured.SetUseDhcp(true); }, readdressed},
                     {[](P p) { p.host.ipv4Gateway.value = Ipv4Address(1); }, "gateway 0.0.0.0"},
                     {[](P p) { p.host.ipv4Gateway.value.reset(); }, "fail "}});
}

TEST(ApplyPlan, Ipv6AndRenewal) {
  expectDifferences(
      unchanged(),
      {{[](P p) { p.pending.ipv6Enabled = false; },
        kOff6 + "dhcp v6 dhcp6 dns !ip, renew 4" + kEnd + ", reboot"},
       {[](P p) { p.pending.ipv6Enabled = p.pending.ipv6EnabledAtStart = false; },
        kOff6 + "dhcp v6 dhcp6 dns !ip"},
       {[](P p) { p.pending.adapters.pop_back(), p.Ip().SetUseIpv6Dhcp(false); },
        "Setting adapters to pnic0, remove pnic1, " + kOn6 +
            "dhcp v6 dns !ipv6, adapters? renew 4"},
       {[](P p) { p.Ip().SetUseIpv6RouterAdvertised(true); }, "config dhcp v6 dhcp6 ra dns !ipv6"},
       {[](P p) { p.Ip().SetIpv6Networks({Ipv6Network()}); },
        "config dhcp v6 dhcp6 ::/64 dns !ipv6"},
       {[](P p) { p.Now().configured = {}, p.pending.ipv6EnabledAtStart = false; },
        "Switching to DHCP on tarn0, " + kOn6 + "dhcp v6 dhcp6 dns !ip/ipv6" + kEnd + ", reboot"},
       {[](P p) { p.pending.ipv6GatewaySet = true; }, "gateway6 ::"}});
}

TEST(ApplyPlan, NamesServersAndDomains) {
  const std::string name = " !ipv6, dns? name alpha, dns? forget",
                    none = "config 10.0.0.9/255.255.255.0 v6";
  Pass base = unchangedStatic();
  expectDifferences(
      base,
      {{[](P p) { p.pending.hostname = "alpha.corp.lan"; }, "dns? fqdn alpha corp.lan"},
       {[](P p) { p.pending.primaryDns = parseIpAddress("fd00::53"); }, "dns? server fd00::53"},
       {[](P p) { p.pending.alternateDns = parseIpAddress("10.0.0.53"); }, "dns? server 10.0.0.53"},
       {[](P p) { p.pending.alternateDns = Ipv4Address(); }, ""},
       {[](P p) { p.pending.suffixes = "a.lan, b.lan,,c.lan\td.lan"; },
        "dns? domain a.lan, dns? domain b.lan, dns? domain c.lan, dns? domain d.lan"}});
  base.Ip().SetDhcpDns(true);
  EXPECT_TRUE(planApply(base.pending, base.host).dnsFromDhcp);
  expectDifferences(base, {{[](P p) { p.Ip().SetUseIpv6Dhcp(false); }, none + name},
                           {[](P p) { p.host.ipv6Enabled.value = false; }, none + " dhcp6" + name},
                           {[](P p) { p.host.ipv6Enabled.value.reset(); }, "fail  !ipv6"},
                           {[](P p) { p.host.ipConfigs.value.reset(); },
                            "fail  !ipv6, kernel6 on !ipv6, Setting ipv6 configuration"}});
}

}  // namespace
