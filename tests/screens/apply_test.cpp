// SPDX-License-Identifier: MIT
// What leaves the console when an operator has the pending network applied, and what they are told.
#include <gtest/gtest.h>

#include <algorithm>

#include "harness/demo.h"

using namespace Harness;

namespace {

const std::string kNo = " failed: no {room}", kShownNo = " failed: no (room)";
const Lines kEverything = parts(
    "Enter;Space;Down;Space;Down;Space;Enter;Enter;Down;Enter;type:42;Enter;Down;Enter;Down;Space;"
    "Down;type:10.20.30.9;Down;type:255.255.255.0;Down;type:10.20.30.254;Enter;Down;Enter;Down;"
    "Down;Space;Down;type:fd00::9/64;Down;Down;Down;type:fd00::1;Enter;Down;Enter;Down;"
    "type:10.20.30.3;Down;type:fd00::53;Down;type:alpha.corp.lan;Enter;Down;Enter;"
    "type:, b.lan,,c.lan;Enter");
const std::string kDone = ";- Network settings changed.";

/// Leaves the window with `changes`, on a host that is another one by then, and acknowledges the
/// failures that are shown: the journal's lines. The key after the answer is for nobody: what is
/// typed during a pass counts nowhere.
Lines applied(Demo& demo, const Lines& changes, const Json& meanwhile, const Lines& failures = {}) {
  openNetwork(demo, 0);
  demo.Do(changes + Lines{"Esc", "wait:Apply changes and"});
  demo.host.Change(meanwhile);
  demo.NewLines();
  demo.Type("y\n");
  for (const std::string& failure : failures)
    demo.Do({"wait:Enable Management Network: Error", "wait:" + failure, "Enter"});
  demo.Do({"wait:<Enter> More"});
  return marked(demo.NewLines());
}

Lines everythingApplied(const Json& meanwhile, const Lines& failures = {}) {
  Demo demo({}, kQuickEscape);
  return applied(demo, kEverything, meanwhile, failures);
}

Lines errorsIn(Lines lines) {
  std::erase_if(lines, [](const auto& line) { return line[0] != '!'; });
  return lines;
}

bool has(const Lines& lines, const std::string& line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

TEST(Apply, BringsEverythingToTheHostInItsOrder) {
  EXPECT_EQ(
      everythingApplied(Json::object()),
      parts("- Setting adapters to pnic1 pnic2;RemoveUplink vSwitch0 pnic0;SetNicTeamingPolicy "
            "Management Network ;AddUplink vSwitch0 pnic1;SetNicTeamingPolicy Management Network "
            "pnic1;- Taking pnic2 from vSwitch1;AddUplink vSwitch0 pnic2;SetNicTeamingPolicy "
            "Management Network pnic1 pnic2;SetMacAddressFromPnic tarn0 pnic1;SetVlanId "
            "Management Network 42;- Setting ipv4 configuration to 10.20.30.9 255.255.255.0 on "
            "tarn0;SetTarnIpv6Enabled on;- Setting ipv6 configuration;SetIpConfig tarn0 "
            "ipv4=10.20.30.9/255.255.255.0 ipv6=fd00::9/64 dhcpDns=off;- Setting default gateway "
            "to 10.20.30.254;SetTarnDefaultGateway 10.20.30.254;- Setting default ipv6 gateway to "
            "fd00::1;SetIpv6TarnDefaultGateway fd00::1;- Changed vlan, restarting management "
            "interface;Disable tarn0;Enable tarn0;- Setting hostname to alpha.corp.lan;SetFqdn "
            "alpha corp.lan;- Setting nameservers to 10.20.30.3 fd00::53;RemoveNameServers;"
            "AddUserNameServer 10.20.30.3;AddUserNameServer fd00::53;- Setting suffixes to "
            "lab.example.test, b.lan,,c.lan;SetSearchDomainsString corp.lan;AddUserSearchDomain "
            "lab.example.test;AddUserSearchDomain b.lan;AddUserSearchDomain c.lan;SaveConfig" +
            kDone));
}

TEST(Apply, GoesOnWhateverFails) {
  // Operations of the library and what is logged to have failed, with a star where it is shown.
  const std::pair<const char*, const char*> cases[] = {
      {"RemoveUplink", "Removing uplink pnic0"},
      {"AddUplink", "Adding uplink pnic1;Adding uplink pnic2"},
      {"SetNicTeamingPolicy",
       "VS: remove uplink from teaming policy;VS: add uplink to teaming policy;VS: add uplink to "
       "teaming policy"},
      {"GetNicTeamingPolicy", "Getting uplinks"},
      {"GetVirtualSwitches", "Getting uplinks;Getting VlanID"},
      {"GetVlanId", "Getting VlanID"},
      {"SetVlanId", "Setting VlanID"},
      {"SetMacAddressFromPnic", "*Setting mac address of pnic"},
      {"SetTarnIpv6Enabled", "*Setting ipv6 configuration"},
      {"SetIpConfig", "*Setting ip/ipv6 configuration"},
      {"SetTarnDefaultGateway", "*Setting default gateway"},
      {"SetIpv6TarnDefaultGateway", "*Setting default ipv6 gateway"},
      {"Disable;Enable", "*Restarting management interface"},
      {"SetFqdn;RemoveNameServers;AddUserNameServer;SetSearchDomainsString;AddUserSearchDomain;"
       "SaveConfig",
       "*Setting DNS"}};
  Json all;
  Lines allShown;
  for (const auto& [operations, failures] : cases) {
    Lines logged = parts(failures), shown;
    if (*failures == '*') shown = {failures + 1 + kShownNo}, logged = {failures + 1};
    for (auto& line : logged) line = "! " + line + kNo;
    for (const auto& operation : parts(operations)) {
      const Lines lines = everythingApplied(failing(operation, "no {room}"), shown);
      EXPECT_EQ(errorsIn(lines), logged);
      EXPECT_EQ(lines.back(), kDone.substr(1));
      EXPECT_EQ(has(lines, "SaveConfig"), logged[0] != "! Setting DNS" + kNo) << operation;
      EXPECT_EQ(has(lines, "- Changed vlan, restarting management interface"),
                has(lines, "SetVlanId Management Network 42"));
      if (!shown.empty()) all["faults"][operation] = "no {room}";
    }
    allShown = allShown + shown;
  }
  everythingApplied(all, allShown);
}

TEST(Apply, GoesOnWithoutTheInterface) {
  const std::string nic = " failed: There is no kernel interface tarn0.",
                    any = " failed: There is no management interface.";
  const Json gone = {{"network", {{"kernelNics", Json::array()}}}};
  EXPECT_EQ(
      errorsIn(everythingApplied(gone, Lines(5, " failed: There is no"))),
      parts("! Could not locate the management interface;! Setting mac address of pnic" + nic +
            ";! Setting ip/ipv6 configuration" + nic + ";! Setting default gateway" + any +
            ";! Setting default ipv6 gateway" + any + ";! Restarting management interface" + nic));
}

const std::string kSuffixes =
    "- Setting suffixes to lab.example.test;SetSearchDomainsString "
    "example.test;AddUserSearchDomain lab.example.test;SaveConfig";

TEST(Apply, IsCarriedToItsEndWhenTheSessionEndsAtAFailure) {
  Demo demo(Json{{"faults", {{"SetIpConfig", "no room"}}}},
            {.arguments = {"--clock-speed", "200"}});
  openNetwork(demo, 0);
  demo.Do({"Down", "Enter", "type:5", "Enter", "Esc", "wait:Apply changes and", "type:y",
           "wait:no room", "wait:" + std::string(kWelcome)});
  EXPECT_TRUE(demo.HasLine("hostctl", "SaveConfig"));
  EXPECT_TRUE(demo.HasLine("log.info", "Network settings changed."));
}

TEST(Apply, LeavesAloneWhatTheHostHasAlready) {
  const std::string other =
      "- Setting adapters to;! Unsupported vSwitch type;! Unsupported vSwitch type;";
  const std::string config =
      "SetTarnIpv6Enabled on;- Setting ipv6 configuration;SetIpConfig tarn0 ipv4=dhcp ipv6=dhcp "
      "router 2001:db8:20::40/64 dhcpDns=on;";
  for (const auto& [type, lines] :
       {std::pair<std::string, std::string>{"standard", "- Setting adapters to pnic0;"},
        {"distributed", ""},
        {"opaque", other},
        {"unknown", other}}) {
    DemoHost host;
    host.Set("/network/kernelNics/0/connection/type", type);
    const Json before = host.State();
    Demo demo(kQuickEscape, std::move(host));
    EXPECT_EQ(applied(demo, parts("Down;Enter;type:5;Enter;Enter;Delete;Enter"), Json::object()),
              parts(lines + config + kSuffixes + kDone));
    EXPECT_EQ(demo.host.State(), before);
  }
}

TEST(Apply, RebootsTheHostAfterASwitchOfIpv6) {
  const Json faults = {
      {"faults", {{"GetConfiguredIpConfig", "no {room}"}, {"RenewLease", "no {room}"}}},
      {"tools", {{"/bin/sh", kGone}}}};
  Demo demo({}, kQuickEscape);
  const std::string ip = "Setting ip configuration", renewing = "Renewing DHCP lease";
  const std::string reboot =
      ";- Rebooting host;- Initializing evbuser library;event\t@&!*@*@(evb.user.kiva.reboot.host)"
      "Rebooting host;run\t/bin/hmx-cmd hmx-cmd -U root hostsvc/autostartmanager/autostop;"
      "run\t/bin/powerOffVms powerOffVms;run\t/bin/sh sh -c reboot";
  EXPECT_EQ(applied(demo, parts("Down;Down;Down;Enter;Up;Space;Enter"), faults,
                    {ip + kShownNo, renewing + kShownNo}),
            parts("- Setting adapters to pnic0;! " + ip + kNo +
                  ";SetTarnIpv6Enabled off;- Renew DHCP lease on tarn0;! " + renewing + kNo + ";" +
                  kSuffixes + reboot + kDone));
}

}  // namespace
