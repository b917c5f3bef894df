// SPDX-License-Identifier: MIT
// What leaves the console when an operator has the pending network applied, and what they are told.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "harness/demo.h"

using namespace Harness;

namespace {

const std::string kNo = " failed: no {room}", kShownNo = " failed: no (room)";
const Lines kOpen = kLogIn + Lines{"Down", "Down", "Enter", "wait:Custom DNS Suffixes"};
const Lines kEverything =
    Lines{"Enter", "type: ", "Down", "type: ", "Down", "type: ", "Enter", "Enter"} +
    Lines{"Down", "Enter", "type:42", "Enter", "Down", "Enter", "Down", "type: ", "Down"} +
    Lines{"type:10.20.30.9", "Down", "type:255.255.255.0", "Down", "type:10.20.30.254", "Enter"} +
    Lines{"Down", "Enter", "Down", "Down", "type: ", "Down", "type:fd00::9/64"} +
    Lines{"Down", "Down", "Down", "type:fd00::1", "Enter", "Down", "Enter", "Down"} +
    Lines{"type:10.20.30.3", "Down", "type:fd00::53", "Down", "type:alpha.corp.lan", "Enter"} +
    Lines{"Down", "Enter", "type:, b.lan", "Enter"};

/// The parts of a text between semicolons.
Lines split(const std::string& text) {
  Lines parts(1);
  for (const char c : text) c == ';' ? parts.emplace_back() : parts.back() += c;
  return parts;
}

const std::string kUplinks =
    "- Setting adapters to pnic1 pnic2;RemoveUplink vSwitch0 pnic0;SetNicTeamingPolicy Management "
    "Network ;AddUplink vSwitch0 pnic1;SetNicTeamingPolicy Management Network pnic1;- Taking pnic2 "
    "from vSwitch1;AddUplink vSwitch0 pnic2;SetNicTeamingPolicy Management Network pnic1 pnic2";
const std::string kMac = ";SetMacAddressFromPnic tarn0 pnic1";
const std::string kVlan = ";SetVlanId Management Network 42";
const std::string kIp =
    ";- Setting ipv4 configuration to 10.20.30.9 255.255.255.0 on tarn0;SetTarnIpv6Enabled on;- "
    "Setting ipv6 configuration;SetIpConfig tarn0 ipv4=10.20.30.9/255.255.255.0 ipv6=fd00::9/64 "
    "dhcpDns=off;- Setting default gateway to 10.20.30.254;SetTarnDefaultGateway 10.20.30.254;- "
    "Setting default ipv6 gateway to fd00::1;SetIpv6TarnDefaultGateway fd00::1";
const std::string kRestart =
    ";- Changed vlan, restarting management interface;Disable tarn0;Enable tarn0";
const std::string kDns =
    ";- Setting hostname to alpha.corp.lan;SetFqdn alpha corp.lan;- Setting nameservers to "
    "10.20.30.3 fd00::53;RemoveNameServers;AddUserNameServer 10.20.30.3;AddUserNameServer fd00::53"
    ";- Setting suffixes to lab.example.test, b.lan;SetSearchDomainsString corp.lan;"
    "AddUserSearchDomain lab.example.test;AddUserSearchDomain b.lan;SaveConfig";
const std::string kDone = ";- Network settings changed.";

/// Leaves the window with `changes`, on a host that is another one by then, and acknowledges the
/// failures that are shown. The journal's lines: information is marked "- ", errors "! ", calls are
/// not. The key after the answer is for nobody: what is typed during a pass counts nowhere.
Lines applied(Demo& demo, const Lines& changes, const Json& meanwhile, const Lines& failures = {}) {
  demo.Do(kOpen + changes + Lines{"Esc", "wait:Apply changes and"});
  demo.host.Change(meanwhile);
  demo.NewLines();
  demo.Type("y\n");
  for (const std::string& failure : failures) {
    const Screen screen = demo.WaitFor("Enable Management Network: Error");
    EXPECT_TRUE(screen.Shows(failure)) << failure << screen.Dump();
    demo.Press("Enter");
  }
  EXPECT_TRUE(demo.Look().Shows("<Enter> More")) << demo.Look().Dump();
  Lines lines = demo.NewLines();
  for (std::string& line : lines)
    for (const auto& [kind, mark] :
         {std::pair("log.info\t", "- "), {"log.err\t", "! "}, {"hostctl\t", ""}})
      if (line.starts_with(kind)) line.replace(0, strlen(kind), mark);
  return lines;
}

Lines everythingApplied(const Json& meanwhile, const Lines& failures = {}) {
  Demo demo({}, kQuickEscape);
  return applied(demo, kEverything, meanwhile, failures);
}

TEST(Apply, FailuresAtTheSwitchAreLoggedOnly) {
  const std::string head = "- Setting adapters to pnic1 pnic2;",
                    policy = "SetNicTeamingPolicy Management Network ",
                    taking = ";- Taking pnic2 from vSwitch1;", no = "! Getting uplinks" + kNo,
                    noVlan = ";! Getting VlanID" + kNo, removed = "RemoveUplink vSwitch0 pnic0;",
                    add = "AddUplink vSwitch0 pnic", team = " uplink to teaming policy" + kNo;
  const std::pair<std::string, std::string> cases[] = {
      {"Nothing", kUplinks + kMac + kVlan},
      {"RemoveUplink", head + "! Removing uplink pnic0" + kNo + ";" + add + "1;" + policy +
                           "pnic0 pnic1" + taking + add + "2;" + policy + "pnic0 pnic1 pnic2" +
                           kMac + kVlan},
      {"AddUplink", head + removed + policy + ";! Adding uplink pnic1" + kNo + taking +
                        "! Adding uplink pnic2" + kNo + kMac + kVlan},
      {"SetNicTeamingPolicy", head + removed + "! VS: remove uplink from teaming policy" + kNo +
                                  ";" + add + "1;! VS: add" + team + taking + add + "2;! VS: add" +
                                  team + kMac + kVlan},
      {"GetNicTeamingPolicy", head + no + kMac + kVlan},
      {"SetVlanId", kUplinks + kMac + ";! Setting VlanID" + kNo},
      {"GetVlanId", kUplinks + kMac + noVlan},
      {"GetVirtualSwitches", head + no + kMac + noVlan},
      {"GetConnectionPoint",
       "! Could not determine if a DVS was in use: no {room};" + head + no + kMac + noVlan}};
  for (const auto& [operation, lines] : cases) {
    const std::string restart = lines.ends_with(kVlan) ? kRestart : "";
    EXPECT_EQ(everythingApplied(failing(operation, "no {room}")),
              split(lines + kIp + restart + kDns + kDone));
  }
}

TEST(Apply, EveryOtherFailureIsShownAndThePassGoesOn) {
  const std::pair<std::string, std::string> cases[] = {
      {"Setting mac address of pnic", "SetMacAddressFromPnic"},
      {"Setting ipv6 configuration", "SetTarnIpv6Enabled"},
      {"Setting ip/ipv6 configuration", "SetIpConfig"},
      {"Setting default gateway", "SetTarnDefaultGateway"},
      {"Setting default ipv6 gateway", "SetIpv6TarnDefaultGateway"},
      {"Restarting management interface", "Disable;Enable"},
      {"Setting DNS",
       "SetFqdn;RemoveNameServers;AddUserNameServer;SetSearchDomainsString;AddUserSearchDomain;"
       "SaveConfig"}};
  Json all;
  Lines shown, logged;
  for (const auto& [what, operations] : cases) {
    shown.push_back(what + kShownNo);
    logged.push_back("! " + what + kNo);
    for (const std::string& operation : split(operations)) {
      Lines lines = split(kUplinks + kMac + kVlan + kIp + kRestart + kDns);
      const auto isIt = [&](const auto& line) { return line.starts_with(operation); };
      const auto failed = std::find_if(lines.begin(), lines.end(), isIt);
      *failed = logged.back();
      // What the library does in one call, or the console in one try, ends there; and an interface
      // that is still under DHCP has a lease to give back.
      if (operation == "Disable") lines.erase(failed + 1);
      if (what == "Setting DNS") lines.erase(failed + 1, lines.end());
      if (operation == "SetIpConfig")
        lines.insert(std::find(lines.begin(), lines.end(), "Disable tarn0"), "ReleaseLease tarn0");
      EXPECT_EQ(everythingApplied(failing(operation, "no {room}"), {shown.back()}),
                lines + split(kDone.substr(1)));
      all["faults"][operation] = "no {room}";
    }
  }
  Lines lines = everythingApplied(all, shown);
  std::erase_if(lines, [](const auto& line) { return line[0] != '!'; });
  EXPECT_EQ(lines, logged);
}

TEST(Apply, GoesOnWithoutTheInterface) {
  const std::string nic = " failed: There is no kernel interface tarn0.",
                    any = " failed: There is no management interface.";
  const Lines logged = {
      "! Could not locate the management interface", "! Setting mac address of pnic" + nic,
      "! Setting ip/ipv6 configuration" + nic,       "! Setting default gateway" + any,
      "! Setting default ipv6 gateway" + any,        "! Restarting management interface" + nic};
  const Json gone = {{"network", {{"kernelNics", Json::array()}}}};
  Lines lines = everythingApplied(gone, Lines(5, " failed: There is no"));
  std::erase_if(lines, [](const auto& line) { return line[0] != '!'; });
  EXPECT_EQ(lines, logged);
}

const std::string kIdleDhcp =
    "SetIpConfig tarn0 ipv4=dhcp ipv6=dhcp router 2001:db8:20::40/64 dhcpDns=on;";
const std::string kIdleDns =
    "- Setting suffixes to lab.example.test;SetSearchDomainsString "
    "example.test;AddUserSearchDomain lab.example.test;SaveConfig";

TEST(Apply, LeavesAloneWhatTheHostHasAlready) {
  const std::string
      other = "- Setting adapters to;! Unsupported vSwitch type;! Unsupported vSwitch type;",
      tail = "SetTarnIpv6Enabled on;- Setting ipv6 configuration;" + kIdleDhcp + kIdleDns + kDone;
  const std::pair<const char*, std::string> cases[] = {{"standard", "- Setting adapters to pnic0;"},
                                                       {"distributed", ""},
                                                       {"opaque", other},
                                                       {"unknown", other}};
  for (const auto& [type, lines] : cases) {
    DemoHost host;
    host.Set("/network/kernelNics/0/connection/type", type);
    const Json before = host.State();
    Demo demo(kQuickEscape, std::move(host));
    EXPECT_EQ(applied(demo, {"Down", "Enter", "type:5", "Enter", "Enter", "Delete", "Enter"},
                      Json::object()),
              split(lines + tail));
    EXPECT_EQ(demo.host.State(), before);
  }
}

TEST(Apply, RebootsTheHostAfterASwitchOfIpv6) {
  Json changes = failing("RenewLease", "no {room}");
  changes.update(rehearsed({{"/bin/sh", kGone}}));
  Demo demo({}, kQuickEscape);
  const Lines off = Lines(3, "Down") + Lines{"Enter", "Up", "type: ", "Enter"};
  EXPECT_EQ(
      applied(demo, off, changes, {"Renewing DHCP lease" + kShownNo}),
      split("- Setting adapters to pnic0;SetTarnIpv6Enabled off;" + kIdleDhcp +
            "- Renew DHCP lease on tarn0;! Renewing DHCP lease" + kNo + ";" + kIdleDns +
            ";- Rebooting host;- Initializing evbuser "
            "library;event\t@&!*@*@(evb.user.kiva.reboot.host)Rebooting host;run\t/bin/hmx-cmd "
            "hmx-cmd -U root hostsvc/autostartmanager/autostop;run\t/bin/powerOffVms "
            "powerOffVms;run\t/bin/sh sh -c reboot" +
            kDone));
}

}  // namespace
