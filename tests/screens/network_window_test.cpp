// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <sstream>

#include "harness/demo.h"

using namespace Harness;

namespace {

Json put(const std::string& path, const Json& value) {
  return {{"op", "replace"}, {"path", "/network/" + path}, {"value", value}};
}

Json network(const std::string& address, int prefix) {
  return {{"address", address}, {"prefix", prefix}, {"type", "static"}};
}

Json configured(const Json& ipv4, bool dhcpv6, const Json& networks = Json::array()) {
  return put("kernelNics/0/configured",
             {{"ipv4", ipv4},
              {"ipv6", {{"dhcp", dhcpv6}, {"routerAdvertisement", false}, {"networks", networks}}},
              {"dnsFromDhcp", ipv4["mode"] == "dhcp"}});
}

const Json kStaticIpv4 = {
    {"mode", "static"}, {"address", "10.20.30.40"}, {"netmask", "255.255.255.0"}};
const Json kFourNetworks = {network("2001:db8::1", 64), network("2001:db8::2", 64),
                            network("2001:db8::3", 64), network("2001:db8::4", 128)};
const Json kStatic = {
    configured(kStaticIpv4, false, kFourNetworks), put("routing/ipv6Gateway", "fe80::1%tarn0"),
    put("switches/0/uplinks", {"pnic3", "pnic0"}), put("switches/0/portGroups/0/vlanId", 4095)};
const Json kDhcp = {configured({{"mode", "dhcp"}}, true)};
const Json kBare = {configured({{"mode", "none"}}, false),
                    put("routing", {{"ipv4Gateway", "0.0.0.0"}, {"ipv6Gateway", "::"}}),
                    put("switches/0/uplinks", Json::array()),
                    put("dns", {{"hostname", "{bad}"},
                                {"domain", "a"},
                                {"nameServers", Json::array()},
                                {"searchDomains", {"b", "a", "{c}"}}})};
const Json kNoIpv6 = {put("ipv6Enabled", false)};

Json connectedTo(const std::string& type) {
  return {put("kernelNics/0/connection/type", type)};
}

/// The first rows of the right pane's text.
Lines pane(const Screen& screen, std::size_t rows) {
  Lines lines;
  for (int row = 4; lines.size() < rows; ++row) {
    std::string text;
    for (int column = 42; column < 78; ++column) text += screen.At(row, column).text;
    lines.push_back(text.substr(0, text.find_last_not_of(' ') + 1));
  }
  return lines;
}

TEST(NetworkWindow, ShowsWhatIsPendingOfEverySetting) {
  const std::string vlan = "A VLAN is a virtual network within a";
  const std::string adapters = "The adapters listed here provide the";
  const std::string ipv4 = "This host can obtain an IPv4 address";
  const std::string ipv6 = "This host can obtain IPv6 addresses";
  const std::string dns = "If this host is configured using";
  const std::string suffixes = "When using short, unqualified names,";
  const struct {
    Json host;
    std::vector<Lines> panes;
  } cases[] = {
      {Json::object(),
       {{"pnic0 Quillon 10G (...) Connected", "", adapters},
        {"Not set", "", vlan},
        {"Automatic", "", "IPv4 Address: Not set", "Subnet Mask: Not set",
         "Default Gateway: 10.20.30.1", "", ipv4},
        {"IPv6 is enabled.", "", "Automatic", "", "IPv6 Addresses:", "2001:db8:20::40/64",
         "Default Gateway:", "2001:db8:20::1", "", ipv6},
        {"Automatic", "", "Hostname:", "halo-01", "Primary DNS Server:", "10.20.30.2", "",
         "Alternate DNS Server:", "2001:db8:20::53", "", dns},
        {"lab.example.test", "", suffixes}}},
      {kStatic,
       {{"pnic3 Quillon 1G Q(...) Disconnected", "pnic0 Quillon 10G (...) Connected", "", adapters},
        {"4095", "", vlan},
        {"Manual", "", "IPv4 Address: 10.20.30.40", "Subnet Mask: 255.255.255.0",
         "Default Gateway: 10.20.30.1", "", ipv4},
        {"IPv6 is enabled.", "", "Manual", "", "IPv6 Addresses:", "2001:db8::1/64",
         "2001:db8::2/64", "2001:db8::3/64", "2001:db8::4/128", "Default Gateway:", "fe80::1%tarn0",
         "", ipv6},
        {"Manual", "", "Hostname:", "halo-01"}}},
      {kBare,
       {{"Not set", "", adapters},
        {"Not set", "", vlan},
        {"None", "", "IPv4 Address: Not set", "Subnet Mask: Not set", "Default Gateway: Not set"},
        {"IPv6 is enabled.", "", "Manual", "", "IPv6 Addresses:", "Not set",
         "Default Gateway:", "Not set", "", ipv6},
        {"Manual", "", "Hostname:", "(bad)", "Primary DNS Server:", "Not set", "",
         "Alternate DNS Server:", "Not set", "", dns},
        {"b, (c)", "", suffixes}}},
      {kNoIpv6, {{}, {}, {}, {"IPv6 is disabled.", "", "This host can be configured to"}}},
      {connectedTo("distributed"), {{"Not set", "", adapters}, {"Not set", "", vlan}}},
      {connectedTo("opaque"), {{"Not set", "", adapters}}},
      {connectedTo("unknown"), {{"Not set", "", adapters}}}};
  for (const auto& one : cases) {
    Demo demo(one.host);
    openNetwork(demo, 0);
    for (const Lines& lines : one.panes) {
      EXPECT_EQ(pane(demo.Look(), lines.size()), lines) << demo.Look().Dump();
      EXPECT_TRUE(demo.Look().Shows("<Enter> Change             <Esc> Exit"));
      demo.Press("Down");
    }
  }
}

TEST(NetworkWindow, DoesNotOpenOnAHostThatItCannotRead) {
  const Lines unreadable = {"Network Configuration Error",
                            "Operation on the management network interface failed."};
  const Lines missing = {"Enable Management Network: Error",
                         "Management network interface cannot be found."};
  const std::string notFound = "Could not get a suitable management interface";
  const struct {
    Lines operations;
    Lines message;
    std::string logged = "no {answer}";
  } cases[] = {
      {{"IsTarnIpv6Enabled", "GetConfiguredIpConfig", "RoutingInfo", "GetTarnDefaultGateway",
        "GetTarnIpv6DefaultGateway", "DnsConfig", "DnsConfig.Refresh", "GetHostname",
        "GetNameServers", "GetDomain", "GetSearchDomains", "GetConnectionPoint"},
       unreadable},
      {{"GetVirtualSwitches", "GetNicTeamingPolicy"},
       unreadable,
       "Getting uplinks failed: no {answer}"},
      {{"GetVlanId"}, unreadable, "Getting VlanID failed: no {answer}"},
      {{"UpdateManagementInterface", "GetManagementInterface"}, missing, notFound}};
  Demo demo;
  logIn(demo);
  demo.Press("Down", 2);
  for (const auto& one : cases)
    for (const std::string& operation : one.operations) {
      SCOPED_TRACE(operation);
      demo.host.Set("/faults", {{operation, "no {answer}"}});
      demo.NewLines();
      demo.Press("Enter");
      const Screen screen = demo.Look();
      EXPECT_EQ(missingFrom(screen, one.message), Lines{}) << screen.Dump();
      EXPECT_FALSE(screen.Shows("VLAN") || screen.Shows("<Esc>")) << "the panes stay empty";
      EXPECT_EQ(demo.NewLines(), (Lines{"log.info\tCOLS=80, LINES=24", "log.err\t" + one.logged}));
      demo.Do({"Enter", "wait:<Enter> More"});
    }
  demo.host.Set("/faults", {{"GetPnics", "no"}});
  demo.Press("Enter");
  EXPECT_EQ(pane(demo.Look(), 2), (Lines{"pnic0", ""})) << "which adapters there are is known";
}

constexpr const char* kRestart = "Apply changes and restart management network?";
constexpr const char* kReboot = "Apply changes and reboot host?";
constexpr const char* kNothing = "System Customization";

/// Steps as words: keys, "Space", and texts to type.
Lines steps(const std::string& words) {
  Lines found;
  std::istringstream in(words);
  for (std::string word; in >> word;) found.push_back(word == "Space" ? "type: " : word);
  return found;
}

/// From the network window to the menu and back to an entry of a fresh one, whatever is pending.
void reopen(Demo& demo, int row) {
  demo.Press("Esc");
  if (demo.Look().Shows("Apply changes")) demo.Type("n");
  demo.Do({"wait:<Enter> More", "Enter"});
  demo.Press("Down", row);
}

TEST(NetworkWindow, AsksOnlyWhereSomethingHasChanged) {
  const std::string confirmAll =
      "0 Enter Enter Down Enter Enter Down Enter Enter Down Enter Enter Down Enter Enter Down "
      "Enter Enter";
  const struct {
    Json host;
    const char* outcome;
    /// Each begins with the entry's row.
    Lines uses;
  } cases[] = {
      {Json::object(), kNothing, {confirmAll, "1 Enter type:7 Esc"}},
      {Json::object(), kNothing, {"4 Enter Down Space Down type:a Up Up Space Enter"}},
      {Json::object(), kRestart, {"0 Enter Down Space Enter", "1 Enter type:7 Enter"}},
      {Json::object(), kRestart, {"3 Enter Space Enter", "4 Enter Down Space Enter"}},
      {kBare, kNothing, {confirmAll}},
      {kNoIpv6, kNothing, {confirmAll}},
      {kNoIpv6, kReboot, {"3 Enter Down Space Enter"}},
      {kDhcp, kNothing, {"2 Enter Up Space Down Space Enter", "2 Enter Down Space Up Space Esc"}},
      {kDhcp, kNothing, {"3 Enter Up Space Enter Enter Down Space Enter"}},
      {kDhcp, kRestart, {"2 Enter Up Space Enter", "3 Enter Down Space Enter"}},
      {kDhcp, kReboot, {"3 Enter Up Space Enter"}},
      {kStatic, kNothing, {confirmAll, "0 Enter Space Esc", "2 Enter Down type:1 Esc"}},
      {kStatic, kRestart, {"0 Enter Space Enter", "1 Enter Delete Enter", "5 Enter type:, Enter"}},
      {kStatic, kRestart, {"2 Enter Up Space Enter", "2 Enter Down type:10.20.30.41 Enter"}},
      {kStatic, kRestart, {"2 Enter Down Down type:255.255.0.0 Enter"}},
      {kStatic, kRestart, {"2 Enter Down Down Down type:0.0.0.0 Enter"}},
      {kStatic, kRestart, {"3 Enter Up Space Enter", "3 Enter Down Down Delete Enter"}},
      {kStatic, kRestart, {"3 Enter Down Down Down Down Delete Enter"}},
      {kStatic,
       kRestart,
       {"4 Enter Down Down Delete Enter", "4 Enter Down Down Down type:b Enter"}}};
  for (const auto& one : cases) {
    Demo demo(one.host, kQuickEscape);
    openNetwork(demo, 0);
    for (const std::string& use : one.uses) {
      SCOPED_TRACE(use + one.host.dump());
      reopen(demo, use[0] - '0');
      demo.Do(steps(use.substr(1)));
      demo.Press("Esc");
      EXPECT_TRUE(demo.Look().Shows(one.outcome)) << demo.Look().Dump();
      demo.Press(one.outcome == kNothing ? "Enter" : "Esc");
    }
    EXPECT_EQ(demo.host.Journal("hostctl"), Lines{}) << "everything is pending";
  }
}

TEST(NetworkWindow, KeepsWhatIsPendingUntilTheOperatorSaysWhatBecomesOfIt) {
  Demo demo(Json::object(), kQuickEscape);
  openNetwork(demo, 1);
  demo.Do({"Enter", "type:7", "Enter"});
  const Screen pending = demo.Look();
  EXPECT_EQ(pane(pending, 2), (Lines{"7", ""}));
  for (int i = 0; i < 2; ++i) {
    demo.Do({"Esc", "wait:Apply changes", "Enter", "type: xq1", "Down", "F2"});
    EXPECT_TRUE(demo.Look().Shows(kRestart)) << "only Y, N and Esc answer";
    demo.Press("Esc");
    EXPECT_EQ(demo.Look(), pending) << "and the selection stays";
  }
  demo.NewLines();
  demo.Do({"Esc", "type:N", "wait:<Enter> More"});
  EXPECT_EQ(demo.NewLines(), Lines{});
  demo.Do({"Enter", "Down"});
  EXPECT_EQ(pane(demo.Look(), 2), (Lines{"Not set", ""})) << "it reads the host afresh";
}

TEST(NetworkWindow, ThereIsNoAdaptersDialogWithoutASwitch) {
  const std::pair<const char*, const char*> cases[] = {
      {"opaque", "log.err\tOpaque network connectee type not supported"},
      {"unknown", "log.err\tUnsupported connectee type"}};
  for (const auto& [type, line] : cases) {
    Demo demo(connectedTo(type));
    openNetwork(demo, 0);
    const Screen before = demo.Look();
    demo.NewLines();
    demo.Press("Enter");
    EXPECT_EQ(demo.Look(), before);
    EXPECT_EQ(demo.NewLines(), Lines{line});
  }
}

constexpr const char* kAccepted = "<Esc> Exit";

/// What is typed into the field `downs` below the marked choice of the dialog of entry `row`.
struct Typed {
  int row, downs;
  std::string text;
  /// The message's title and text; kAccepted where there is none.
  Lines refused = {kAccepted};
  /// What the field shows of it, where not all of it.
  std::string taken = {};
};

void expectTyped(Demo& demo, const Typed& one) {
  SCOPED_TRACE(testing::Message() << one.row << "/" << one.downs << " " << one.text);
  reopen(demo, one.row);
  const Screen window = demo.Look();
  demo.Press("Enter");
  demo.Press("Down", one.downs);
  demo.Do({"Delete", "type:" + one.text});
  const Screen typed = demo.Look();
  EXPECT_TRUE(typed.cursorVisible && typed.Shows("[ " + one.taken)) << typed.Dump();
  demo.Press("Enter");
  EXPECT_EQ(missingFrom(demo.Look(), one.refused), Lines{}) << demo.Look().Dump();
  if (one.refused[0] == kAccepted) return;
  demo.Press("Enter");
  EXPECT_EQ(demo.Look(), typed) << "the focus is where the trouble is, the text is kept";
  demo.Press("Esc");
  EXPECT_EQ(demo.Look(), window) << "nothing is pending";
}

TEST(IpDialogs, TakeValidAddressesOnly) {
  const std::string digits(100, '1');
  const Lines address = {"Invalid IP address", "Please reenter a valid IPv4 address (x.x.x.x)."};
  const Lines subnet = {"Invalid subnet", "Please reenter a valid subnet (x.x.x.x)."};
  const Lines gateway = {"Invalid gateway address", "valid gateway address (x.x.x.x)."};
  const Lines network = {"Invalid IP address", "valid IPv6 network address (x:x:x/x)."};
  const Lines scope = {"Invalid scope", "Cannot add a link-local address as static address."};
  const Lines router = {"Invalid gateway address", "valid IPv6 gateway address (x:x:x)."};
  const Lines linkLocal = {"Invalid gateway address",
                           "Link-local addresses are not supported as default"};
  std::vector<Typed> cases = {
      {2, 1, "224.0.0.1"},
      {2, 1, "255.255.255.255"},
      {2, 1, "a1:b.2 -%_.c3.4", {kAccepted}, "1.2.3.4 "},
      {2, 2, "255.255.255.255"},
      {2, 2, "128.0.0.0"},
      {2, 3, "0.0.0.0"},
      {3, 1, ""},
      {3, 1, "2001:db8::1/128"},
      {3, 1, "ff02::1/1"},
      {3, 1, "fec0::1/64"},
      {3, 2, "::ffff:1.2.3.4/96", {kAccepted}, "::ffff:1234/96 "},
      {3, 3, "2001:DB8::9%_-tarn0/64", {kAccepted}, "2001:DB8::9%tarn0/64 "},
      {3, 3, "fe80::1/64", scope},
      {3, 1, "febf::1%tarn0/64", scope},
      {3, 4, ""},
      {3, 4, "2001:db8::1"},
      {3, 4, "fe80::1%tarn0"},
      {3, 4, "fe80::1", linkLocal},
      {3, 4, "fe80::2%tarn0", linkLocal}};
  for (const auto& text : {"", "1.2.3", "1.2.3.4.5", "256.1.1.1", "01.2.3.4", digits.c_str()}) {
    cases.push_back({2, 1, text, address});
    cases.push_back({2, 2, text, subnet});
    cases.push_back({2, 3, text, gateway});
  }
  for (const auto& text : {"0.0.0.0", "255.0.255.0", "0.255.255.255"})
    cases.push_back({2, 2, text, subnet});
  for (const auto& text : {"2001:db8::1", "2001:db8::1/", "2001:db8::1/0", "2001:db8::1/129",
                           "1/64", "2001:db8::1/64/64", "2001:db8::1%/64", "1:2:3:4:5:6:7:8:9/64"})
    for (int field = 1; field <= 3; ++field) cases.push_back({3, field, text, network});
  for (const auto& text : {"2001:db8::1/64", "2001:db8::1%", "gateway", digits.c_str()})
    cases.push_back({3, 4, text, router});
  Demo demo(kStatic, kQuickEscape);
  openNetwork(demo, 0);
  for (Typed& one : cases) {
    if (one.taken.empty()) one.taken = one.text.substr(0, 16);
    expectTyped(demo, one);
  }
}

TEST(IpDialogs, OnlyTheMarkedChoiceCanBeFilledIn) {
  const struct {
    Json host;
    int row;
    std::string steps;
    Lines shows;
    /// Hidden where it is nowhere.
    Position cursor = {};
  } cases[] = {{kDhcp, 2, "", {"(o) Use dynamic IPv4", "( ) Set static", "( ) Disable"}},
               {kDhcp, 2, "Down Down Down Space", {"(o) Set static", "( ) Use dynamic"}},
               {kDhcp, 2, "Down Space Down", {"[ 0.0.0.0 "}, {14, 61}},
               {kStatic, 2, "Down Down Down Down Down", {"(o) Set static"}, {16, 64}},
               {kStatic, 2, "Down Down type:1 Space type:2", {"[ 12 "}, {15, 56}},
               {kStatic, 2, "Down Up", {"(o) Set static"}},
               {kBare, 2, "", {"(o) Disable IPv4"}},
               {kDhcp, 3, "Down Space", {"(o) Use dynamic", "[ ] Use DHCPv6"}},
               {kDhcp, 3, "Down Down Space", {"(o) Set static", "[X] Use DHCPv6"}},
               {kStatic, 3, "Up Space", {"(o) Use dynamic", "[ ] Use DHCPv6"}},
               {kStatic, 3, "Up Space Down Space", {"[X] Use DHCPv6"}},
               {kStatic, 3, "Down Home Right", {"[ 2001:db8::1/64 "}, {14, 29}},
               {kNoIpv6, 3, "Down Down Up Down Space", {"(o) Set static", "( ) Disable"}}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.steps + one.host.dump());
    Demo demo(one.host);
    openNetwork(demo, one.row);
    demo.Press("Enter");
    demo.Do(steps(one.steps));
    const Screen screen = demo.Look();
    EXPECT_EQ(missingFrom(screen, one.shows), Lines{}) << screen.Dump();
    EXPECT_EQ(screen.cursorVisible ? screen.cursor : Position{}, one.cursor) << screen.Dump();
  }
}

}  // namespace
