// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

const Json kDhcp = networkWith(R"({"kernelNics/0/configured": {"dnsFromDhcp": true, "ipv4":
  {"mode": "dhcp"}, "ipv6": {"dhcp": true, "routerAdvertisement": false, "networks": []}}})");
const Json kStatic = networkWith(R"({"kernelNics/0/configured": {"dnsFromDhcp": false,
  "ipv4": {"mode": "static", "address": "10.20.30.40", "netmask": "255.255.255.0"},
  "ipv6": {"dhcp": false, "routerAdvertisement": false, "networks": [
    {"address": "2001:db8::1", "prefix": 64, "type": "static"},
    {"address": "2001:db8::2", "prefix": 64, "type": "static"},
    {"address": "2001:db8::3", "prefix": 64, "type": "static"},
    {"address": "2001:db8::4", "prefix": 128, "type": "static"}]}},
  "routing/ipv6Gateway": "fe80::1%tarn0",
  "switches/0/uplinks": ["pnic3", "pnic0"], "switches/0/portGroups/0/vlanId": 4095})");
const Json kBare = networkWith(R"({"kernelNics/0/configured": {"dnsFromDhcp": false,
  "ipv4": {"mode": "none"}, "ipv6": {"dhcp": false, "routerAdvertisement": false, "networks": []}},
  "routing": {"ipv4Gateway": "0.0.0.0", "ipv6Gateway": "::"}, "switches/0/uplinks": [],
  "dns": {"hostname": "{bad}", "domain": "a", "nameServers": [],
          "searchDomains": ["b", "a", "{c}"]}})");
const Json kNoIpv6 = networkWith(R"({"ipv6Enabled": false})");
const Json kDnsByDhcpv6 = networkWith(R"({"kernelNics/0/configured/ipv4/mode": "none"})");
const Json kStaticBesideDhcpv6 = networkWith(R"({"kernelNics/0/configured/ipv4":
  {"mode": "static", "address": "10.20.30.40", "netmask": "255.255.255.0"}})");
const Json kDistributed = networkWith(R"({"kernelNics/0/connection/type": "distributed"})");
const Json kUnknown = networkWith(R"({"kernelNics/0/connection/type": "unknown"})");

/// The first rows of the right pane's text.
Lines pane(const Screen& screen, std::size_t rows) {
  Lines lines;
  while (lines.size() < rows)
    lines.push_back(screen.Cells(4 + static_cast<int>(lines.size()), 42, 78));
  return lines;
}

TEST(NetworkWindow, ShowsWhatIsPendingOfEverySetting) {
  const std::string router = "Default Gateway:", alternate = "Alternate DNS Server:";
  /// The panes of one entry after the other.
  const std::pair<Json, std::vector<Lines>> cases[] = {
      {Json::object(),
       {{"pnic0 Quillon 10G (...) Connected", "", "The adapters listed here provide the"},
        {"Not set", "", "A VLAN is a virtual network within a"},
        {"Automatic", "", "IPv4 Address: Not set", "Subnet Mask: Not set", router + " 10.20.30.1",
         "", "This host can obtain an IPv4 address"},
        {"IPv6 is enabled.", "", "Automatic", "", "IPv6 Addresses:", "2001:db8:20::40/64", router,
         "2001:db8:20::1", "", "This host can obtain IPv6 addresses"},
        {"Automatic", "", "Hostname:", "halo-01", "Primary DNS Server:", "10.20.30.2", "",
         alternate, "2001:db8:20::53", "", "If this host is configured using"},
        {"lab.example.test", "", "When using short, unqualified names,"}}},
      {kStatic,
       {{"pnic3 Quillon 1G Q(...) Disconnected", "pnic0 Quillon 10G (...) Connected", ""},
        {"4095"},
        {"Manual", "", "IPv4 Address: 10.20.30.40", "Subnet Mask: 255.255.255.0"},
        {"IPv6 is enabled.", "", "Manual", "", "IPv6 Addresses:", "2001:db8::1/64",
         "2001:db8::2/64", "2001:db8::3/64", "2001:db8::4/128", router, "fe80::1%tarn0"},
        {"Manual"}}},
      {kBare,
       {{"Not set", ""},
        {"Not set", ""},
        {"None", "", "IPv4 Address: Not set", "Subnet Mask: Not set", router + " Not set"},
        {"IPv6 is enabled.", "", "Manual", "", "IPv6 Addresses:", "Not set", router, "Not set"},
        {"Manual", "", "Hostname:", "(bad)", "Primary DNS Server:", "Not set", "", alternate,
         "Not set"},
        {"b, (c)", ""}}},
      {kNoIpv6, {{}, {}, {}, {"IPv6 is disabled.", "", "This host can be configured to"}}},
      {kDistributed, {{"Not set", ""}, {"Not set", ""}}}};
  for (const auto& [host, panes] : cases) {
    Demo demo(host);
    openNetwork(demo, 0);
    for (const Lines& lines : panes) {
      EXPECT_EQ(pane(demo.Look(), lines.size()), lines) << demo.Look().Dump();
      EXPECT_TRUE(demo.Look().Shows("<Enter> Change             <Esc> Exit"));
      demo.Press("Down");
    }
  }
  Demo demo;  // the ends of the descriptions, which have room there
  openNetwork(demo, 1);
  demo.Do(parts("wait:unset.;Down;wait:settings.;Down;Down;wait:settings.;Down;wait:ends."));
}

TEST(NetworkWindow, DoesNotOpenOnAHostThatItCannotRead) {
  const Lines unreadable = {"Network Configuration Error",
                            "Operation on the management network interface failed."},
              missing = {"Enable Management Network: Error",
                         "Management network interface cannot be found."};
  const std::tuple<std::string, Lines, std::string> cases[] = {
      {"", missing, "Could not get a suitable management interface"},
      {"IsTarnIpv6Enabled;UpdateManagementInterface;GetManagementInterface;GetConfiguredIpConfig;"
       "RoutingInfo;GetTarnDefaultGateway;"
       "GetTarnIpv6DefaultGateway;DnsConfig;DnsConfig.Refresh;GetHostname;GetNameServers;GetDomain;"
       "GetSearchDomains;GetConnectionPoint",
       unreadable, "no {answer}"},
      {"GetVirtualSwitches;GetNicTeamingPolicy", unreadable, "Getting uplinks failed: no {answer}"},
      {"GetVlanId", unreadable, "Getting VlanID failed: no {answer}"}};
  Demo demo;
  const Json nics = demo.host.State()["network"]["kernelNics"];
  openMenu(demo, 2);
  for (const auto& [operations, message, logged] : cases)
    for (const std::string& operation : parts(operations)) {
      SCOPED_TRACE(operation);
      demo.host.Set("/faults", {{operation, "no {answer}"}});
      demo.host.Set("/network/kernelNics", operation.empty() ? Json::array() : nics);
      demo.NewLines();
      demo.Press("Enter");
      const Screen screen = demo.Look();
      EXPECT_EQ(missingFrom(screen, message), Lines{}) << screen.Dump();
      EXPECT_FALSE(screen.Shows("VLAN") || screen.Shows("<Esc>")) << "the panes stay empty";
      EXPECT_EQ(demo.NewLines(), (Lines{"log.info\tCOLS=80, LINES=24", "log.err\t" + logged}));
      demo.Do({"Enter", "wait:<Enter> More"});
    }
}

constexpr const char* kRestart = "Apply changes and restart management network?";
constexpr const char* kReboot = "Apply changes and reboot host?";
constexpr const char* kNothing = "System Customization";

/// From the network window to the menu and back to an entry of a fresh one, whatever is pending.
void reopen(Demo& demo, int row) {
  demo.Press("Esc");
  if (demo.Look().Shows("Apply changes")) demo.Type("n");
  demo.Do({"wait:<Enter> More", "Enter"});
  demo.Press("Down", row);
}

TEST(NetworkWindow, AsksOnlyWhereSomethingHasChanged) {
  const std::string next = " Enter Enter Down", all = "0" + next + next + next + next + next + next;
  /// The uses between semicolons; each begins with the entry's row.
  const std::tuple<Json, const char*, std::string> cases[] = {
      {{}, kNothing, all + ";1 Enter type:7 Esc;4 Enter Down Space Down type:a Up Up Space Enter"},
      {{}, kRestart, "0 Enter Down Space Enter;1 Enter type:7 Enter"},
      {{}, kNothing, "3 Enter Space Enter;3 Enter Up Space Enter Enter Down Space Enter"},
      {{}, kRestart, "4 Enter Down Space Enter"},
      {kBare, kNothing, all},
      {kDnsByDhcpv6, kNothing, all + ";4 Enter Space Enter"},
      {kDnsByDhcpv6, kRestart, "4 Enter Down Space Enter"},
      {kStaticBesideDhcpv6, kNothing, all},
      {kStaticBesideDhcpv6, kRestart, "4 Enter Space Enter"},
      {kUnknown, kNothing, "0 Enter"},
      {kNoIpv6, kNothing, all},
      {kNoIpv6, kReboot, "3 Enter Down Space Enter"},
      {kDhcp, kNothing, "2 Enter Up Space Down Space Enter;2 Enter Down Space Up Space Esc"},
      {kDhcp, kNothing, "3 Enter Up Space Enter Enter Down Space Enter"},
      {kDhcp, kRestart, "2 Enter Up Space Enter;3 Enter Down Space Enter"},
      {kDhcp, kReboot, "3 Enter Up Space Enter"},
      {kStatic, kNothing, all + ";0 Enter Space Esc;2 Enter Down type:1 Esc"},
      {kStatic, kRestart, "0 Enter Space Enter;1 Enter Delete Enter;2 Enter Up Space Enter"},
      {kStatic, kRestart,
       "2 Enter Down type:10.20.30.41 Enter;2 Enter Down Down type:255.255.0.0 Enter;"
       "2 Enter Down Down Down type:0.0.0.0 Enter;3 Enter Up Space Enter;"
       "3 Enter Down Down Delete Enter;3 Enter Down Down Down Down Delete Enter;"
       "4 Enter Down Down Delete Enter;4 Enter Down Down Down type:b Enter;5 Enter type:, Enter"}};
  for (const auto& [host, outcome, uses] : cases) {
    Demo demo(host.is_null() ? Json::object() : host, kQuickEscape);
    openNetwork(demo, 0);
    for (const std::string& use : parts(uses, ';')) {
      SCOPED_TRACE(use + host.dump());
      reopen(demo, use[0] - '0');
      demo.Do(parts(use.substr(2), ' ') + Lines{"Esc", std::string("wait:") + outcome});
      demo.Press(outcome == kNothing ? "Enter" : "Esc");
    }
    EXPECT_EQ(demo.host.Journal("hostctl"), Lines{}) << "everything is pending";
  }
}

TEST(NetworkWindow, KeepsWhatIsPendingUntilTheOperatorSaysWhatBecomesOfIt) {
  Demo demo(kStatic, kQuickEscape);
  openNetwork(demo, 3);
  const Lines change = parts("Enter Down Down Down Down Delete Enter", ' ');
  const Screen before = demo.Look(), pending = (demo.Do(change), demo.Look());
  EXPECT_TRUE(before.Shows("fe80::1%tarn0") && !pending.Shows("fe80::1%tarn0"));
  for (int i = 0; i < 2; ++i) {
    demo.Do({"Esc", "wait:Apply changes", "Enter", "type: xq1", "Down", "F2"});
    demo.Do({std::string("wait:") + kRestart, "Esc"});  // only Y, N and Esc answer
    EXPECT_EQ(demo.Look(), pending) << "and the selection stays";
  }
  demo.NewLines();
  demo.Do({"Esc", "type:N", "wait:<Enter> More"});
  EXPECT_EQ(demo.NewLines(), Lines{});
  demo.Do({"Enter", "Down", "Down", "Down"});
  EXPECT_EQ(demo.Look(), before) << "it reads the host afresh";
  demo.Do(change + Lines{"Esc", "type:y", "wait:<Enter> More"});
  EXPECT_EQ(demo.host.State()["network"]["routing"]["ipv6Gateway"], "::") << "taken away there too";
}

/// `place` is the row of the dialog's entry and how far below the marked choice the field is.
/// `answer` is on the screen after Enter: the window again, or a message's title and text.
void expectTyped(Demo& demo, const std::string& place, const std::string& text,
                 const std::string& shown, const Lines& answer) {
  SCOPED_TRACE(place + text);
  reopen(demo, place[0] - '0');
  const Screen window = demo.Look();
  demo.Press("Enter");
  demo.Press("Down", place[1] - '0');
  demo.Do({"Delete", "type:" + text});
  const Screen typed = demo.Look();
  EXPECT_TRUE(typed.cursorVisible && typed.Shows("[ " + shown)) << typed.Dump();
  demo.Press("Enter");
  EXPECT_EQ(missingFrom(demo.Look(), answer), Lines{}) << demo.Look().Dump();
  if (answer.size() == 1) return;
  demo.Press("Enter");
  EXPECT_EQ(demo.Look(), typed) << "the focus is where the trouble is, the text is kept";
  demo.Press("Esc");
  EXPECT_EQ(demo.Look(), window) << "nothing is pending";
}

TEST(IpDialogs, TakeValidAddressesOnly) {
  const std::string endless(100, '1');
  const std::string bad4 = ";1.2.3;1.2.3.4.5;256.1.1.1;01.2.3.4;" + endless;
  const std::string bad6 =
      "2001:db8::1;2001:db8::1/;2001:db8::1/0;2001:db8::1/129;1/64;::/64/64;"
      "2001:db8::1%/64;1:2:3:4:5:6:7:8:9/64;::fffff/64;" +
      endless;
  const std::string ok = "<Esc> Exit", again = ";Please reenter a valid ",
                    ip = "Invalid IP address", gateway = "Invalid gateway address",
                    linkLocal = ";Link-local addresses are not supported as default";
  /// Places, texts for each, the answer, and what the field takes of a text, where not all of it.
  const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
      {"21", "a1:b.2 -%_.c3.4", ok, "1.2.3.4 "},
      {"21;22;23", "224.0.0.0;255.255.255.255", ok, ""},
      {"23", "0.0.0.0", ok, ""},
      {"21", bad4, ip + again + "IPv4 address (x.x.x.x).", ""},
      {"22", bad4 + ";0.0.0.0;255.0.255.0;0.255.255.255",
       "Invalid subnet;a valid subnet (x.x.x.x).", ""},
      {"23", bad4, gateway + again + "gateway address (x.x.x.x).", ""},
      {"31", ";2001:db8::1/128;ff02::1/1;fec0::1/64", ok, ""},
      {"32", "::ffff:102:304/96", ok, ""},
      {"33", "2001:DB8::9%_ -tarn0/64", ok, "2001:DB8::9%tarn0/64 "},
      {"31;32;33", bad6, ip + again + "IPv6 network address (x:x:x/x).", ""},
      {"31;33", "fe80::1/64;febf::1%tarn0/64",
       "Invalid scope;Cannot add a link-local address as static address.", ""},
      {"34", ";2001:db8::1;fe80::1%tarn0", ok, ""},
      {"34", "2001:db8::1/64;2001:db8::1%;gateway;" + endless,
       gateway + again + "IPv6 gateway address (x:x:x).", ""},
      {"34", "fe80::1;fe80::2%tarn0", gateway + linkLocal, ""}};
  Demo demo(kStatic, kQuickEscape);
  openNetwork(demo, 0);
  for (const auto& [places, texts, answer, shown] : cases)
    for (const std::string& place : parts(places))
      for (const std::string& text : parts(texts))
        expectTyped(demo, place, text, shown.empty() ? text.substr(0, 16) : shown, parts(answer));
}

TEST(IpDialogs, OnlyTheMarkedChoiceCanBeFilledIn) {
  const Position hidden;  // it is nowhere
  const std::tuple<Json, int, std::string, Lines, Position> cases[] = {
      {kDhcp, 2, "Enter", {"(o) Use dynamic IPv4", "( ) Set static", "( ) Disable"}, hidden},
      {kDhcp, 2, "Enter Down Down Down Space", {"(o) Set static", "( ) Use dynamic"}, hidden},
      {kDhcp, 2, "Enter Down Space Down", {"[ 0.0.0.0 "}, {14, 61}},
      {kStatic, 2, "Enter Down Down Down Down Down", {"(o) Set static"}, {16, 64}},
      {kStatic, 2, "Enter Down Down type:1 Space type:2", {"[ 12 "}, {15, 56}},
      {kBare, 2, "Enter", {"(o) Disable IPv4"}, hidden},
      {kStatic, 2, "Enter Down type:1.2.3 Down type:0.0.0.0 Up Up Enter Enter", {}, {14, 59}},
      {kStatic, 2, "Enter Down type:1.2 Up Up Up Space Enter", {"None", "way: Not set"}, hidden},
      {kStatic, 3, "Enter Down type:junk Up Up Space Enter", {"Automatic", "<Esc> Exit"}, hidden},
      {kStatic, 3, "Enter Up Up Space Enter", {"IPv6 is disabled.", "IPv6 Addresses:"}, hidden},
      {kNoIpv6, 3, "Enter Down Space Enter", {"The support for IPv6 will be"}, hidden},
      {kDistributed, 0, "Enter", {"Device Name"}, hidden},
      {kStatic, 3, "Enter Up Space Down Space", {"[X] Use DHCPv6"}, hidden},
      {kStatic, 3, "Enter Down Home Right", {"[ 2001:db8::1/64 "}, {14, 29}},
      {kNoIpv6, 3, "Enter Down Down Up Down Space", {"(o) Set static", "( ) Disable"}, hidden}};
  for (const auto& [host, row, steps, shows, cursor] : cases) {
    SCOPED_TRACE(steps + host.dump());
    Demo demo(host);
    openNetwork(demo, row);
    demo.Do(parts(steps, ' '));
    const Screen screen = demo.Look();
    EXPECT_EQ(missingFrom(screen, shows), Lines{}) << screen.Dump();
    EXPECT_EQ(screen.cursorVisible ? screen.cursor : hidden, cursor) << screen.Dump();
  }
}

}  // namespace
