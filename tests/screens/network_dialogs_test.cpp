// SPDX-License-Identifier: MIT
// The dialogs of DNS, suffixes, VLAN and adapters, and what the network window shows of them.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

enum Setting { kAdapters, kVlan, kDns = 4, kSuffixes };

/// From the welcome screen into the dialog of a setting.
void open(Demo& demo, Setting setting) {
  openNetwork(demo, setting);
  demo.Press("Enter");
}

/// The values in the window's right pane, which are white.
Lines valuesOf(const Screen& screen, int columns = 37) {
  Lines values;
  for (int row = 4; row < 20; ++row)
    if (screen.ColoursAt(row, 42).foreground == 7 && screen.At(row, 42).text != " ")
      values.push_back(screen.Cells(row, 42, 42 + columns));
  return values;
}

const Lines kManual = {"Down", "type: ", "Down"};

TEST(NetworkDialogs, FieldsTakeWhatTheyAreFor) {
  const std::string all = "type: !\"#$%&'()*+,-./0123456789:;<=>?@[\\]^_`{|}~azAZ\303\244";
  const std::tuple<Setting, Lines, const char*> cases[] = {
      {kVlan, {}, "access all VLANs):         [ 456789 ]"},
      {kSuffixes, {}, "[ lab.example.test ,-.0123456789azAZ  ]"},
      {kDns, kManual, "Primary DNS Server     [ -.0123456789:azAZ  "},
      {kDns, kManual + "Down", "Alternate DNS Server   [ -.0123456789:azAZ  "},
      {kDns, kManual + "Down" + "Down", "Hostname               [ -.0123456789azAZ  "}};
  for (const auto& [setting, way, shown] : cases) {
    Demo demo({}, kQuickEscape);
    open(demo, setting);
    EXPECT_EQ(demo.Look().cursorVisible, way.empty()) << "a choice has the focus";
    demo.Do(way + all + (std::string("wait:") + shown));
    EXPECT_TRUE(demo.Look().cursorVisible);
  }
}

TEST(NetworkDialogs, AVlanIsRefusedWarnedOfOrTaken) {
  Demo demo;
  open(demo, kVlan);
  demo.Do({"type:4096", "Enter", "wait:valid VLAN ID (1-4095).", "Enter", "wait:[ 4096 "});
  demo.Do({"Backspace", "type:4", "Left", "Backspace", "type:9", "Enter"});
  EXPECT_EQ(valuesOf(demo.Look()), Lines{"4094"});
  demo.Do({"Enter", "type:4095", "Enter", "wait:You entered a VLAN ID of 4095.", "Enter"});
  EXPECT_EQ(valuesOf(demo.Look()), Lines{"4095"});
  demo.Do({"Enter", "wait:[ 4095 ", "Delete", "Enter"});
  EXPECT_EQ(valuesOf(demo.Look()), Lines{"Not set"});
  demo.Do({"Enter", "wait:access all VLANs):         [        ]"});
}

TEST(NetworkDialogs, SuffixesAreTakenAsTyped) {
  Demo demo;
  open(demo, kSuffixes);
  std::string many = ", ,,  ";
  for (int i = 0; i < 200; ++i) many += "s" + std::to_string(i) + ".test" + ",  ,"[i % 4];
  demo.Do({"type:" + many, "Enter"});
  EXPECT_EQ(valuesOf(demo.Look())[1], "s0.test,s1.test s2.test");
  demo.Do({"Enter", "wait:s198.test s199.test,", "Home", "wait:[ lab.example.test, ,,  s0"});
}

TEST(NetworkDialogs, DnsServersAreAddressesOrNotSet) {
  const Lines automatic = {"Automatic", "halo-01", "10.20.30.2", "2001:db8:20::53"},
              manual = {"Manual", "halo-01", "10.20.30.2", "2001:db8:20::53"},
              unset = {"Manual", "Not set", "Not set", "Not set"};
  const std::tuple<std::string, Lines, Lines> cases[] = {
      {"dhcp", {"Enter"}, automatic},
      {"none", {"Enter"}, automatic},
      {"none", parts("Down;type: ;wait:( ) Obtain;wait:(o) Use;Enter"), manual},
      {"static", parts("Up;type: ;wait:( ) Obtain;wait:(o) Use;Enter"), manual},
      {"dhcp", kManual + parts("Delete;Down;Delete;Down;Delete;Enter"), unset},
      {"dhcp",
       kManual + parts("type:::1;Down;type:192.0.2.1;Down;type:-a..b;Enter"),
       {"Manual", "-a..b", "::1", "192.0.2.1"}},
      {"dhcp", kManual + "type:bad" + "Up" + "Up" + "type: " + "Enter", automatic}};
  for (const auto& [ipv4, keys, values] : cases) {
    Demo demo(networkWith(R"({"kernelNics/0/configured/ipv4": {"mode": ")" + ipv4 +
                          R"(", "address": "10.0.0.5", "netmask": "255.0.0.0"}})"));
    open(demo, kDns);
    demo.Do(keys);
    const Lines pane = valuesOf(demo.Look());
    ASSERT_EQ(pane.size(), 7u) << demo.Look().Dump();
    EXPECT_EQ((Lines{pane[0], pane[2], pane[4], pane[6]}), values);
  }
}

TEST(NetworkDialogs, ABadDnsServerHasTheFocusAgain) {
  Demo demo;
  open(demo, kDns);
  demo.Do(kManual + "type:1.2.3" + "Down" + "type:::1:" + "Enter" + "wait:Invalid DNS" + "Enter");
  demo.Do({"type:.4", "wait:Primary DNS Server     [ 1.2.3.4 ", "Enter"});
  demo.Do({"wait:Please reenter a valid DNS server", "Enter", "Backspace", "Enter"});
  EXPECT_EQ(valuesOf(demo.Look()).back(), "::1");
}

/// A host with many adapters; pnic10 and pnic2 are the management network's, pnic3 is taken.
DemoHost manyAdapters() {
  Json pnics = Json::array();
  for (const int number : {11, 10, 1, 0, 9, 8, 7, 6, 5, 4, 3, 2})
    pnics.push_back({{"name", "pnic" + std::to_string(number)},
                     {"description", number == 3 ? "Onboard {A}" : "Quillon"},
                     {"driver", "qln"},
                     {"macAddress", "02:00:00:00:00:" + std::to_string(10 + number)},
                     {"linkUp", number != 3},
                     {"speed", 0}});
  DemoHost host;
  host.Set("/network/pnics", pnics);
  host.Set("/network/switches/0/uplinks", {"pnic10", "pnic2"});
  host.Set("/network/switches/1/uplinks", {"pnic3"});
  return host;
}

/// The list's rows, from the check to the first blank after the name.
Lines rowsOf(const Screen& screen) {
  Lines rows;
  for (int row = 10; row < 19; ++row) rows.push_back(screen.Cells(row, 3, 14));
  return rows;
}

TEST(NetworkDialogs, AdaptersStandWithTheChosenOnesFirst) {
  Demo demo({}, manyAdapters());
  open(demo, kAdapters);
  EXPECT_EQ(rowsOf(demo.Look()),
            (Lines{"[X] pnic10", "[X] pnic2", "[ ] pnic0", "[ ] pnic1", "[ ] pnic3", "[ ] pnic4",
                   "[ ] pnic5", "[ ] pnic6", "[ ] pnic7"}));
  EXPECT_TRUE(demo.Look().Shows("pnic3        Onbo(...) (02:00:00:00:00:13) Disconnected"));
  demo.Press("Down", 20);
  EXPECT_EQ(rowsOf(demo.Look()).back(), "[ ] pnic11");
  demo.Type(" ");
  demo.Press("Up", 20);
  demo.Do({"type: ", "Enter"});
  EXPECT_EQ(valuesOf(demo.Look(), 6), (Lines{"pnic2", "pnic11"}));
  demo.Do({"Enter", "type: ", "Down", "type: ", "Enter"});
  EXPECT_EQ(valuesOf(demo.Look()), Lines{"Not set"});
}

TEST(NetworkDialogs, AnUsedAdapterIsTakenOnlyAfterAQuestion) {
  const std::string question = "wait:Remove these adapters from their current connections?";
  for (const Json& fault : {Json::object(), failing("GetVirtualSwitches", "no switch")}) {
    Demo demo(kQuickEscape, manyAdapters());
    open(demo, kAdapters);
    demo.host.Change(fault);
    demo.Press("Down", 4);
    demo.Do({"type: ", "Enter", question, "type: ", "Esc"});
    EXPECT_EQ(rowsOf(demo.Look())[4], "[X] pnic3");
    demo.Do({"Enter", question, "Enter"});
    EXPECT_EQ(valuesOf(demo.Look(), 6), (Lines{"pnic10", "pnic2", "pnic3"}));
    EXPECT_EQ(demo.HasLine("log.err", "no switch"), !fault.empty());
  }
}

TEST(NetworkDialogs, AdaptersHaveDetails) {
  const Json none = Json::object();
  const Json gone = Json::array({{{"op", "remove"}, {"path", "/network/pnics/11"}}});
  const std::tuple<int, Json, Lines> cases[] = {
      {4, none, {"Device Name: pnic3 ", "Onboard (A) ", "02:00:00:00:00:13 ", "vSwitch1 (Sto"}},
      {2, none, {"pnic0", "Label:     Quillon ", "Status:  Connected ", "            None "}},
      {2, failing("GetVirtualSwitches", "no switch"), {"Used By:                 "}},
      {1, failing("GetPnics", "no adapter"), {"Quillon ", "Status:  Connected "}},
      {1, gone, {"pnic2", "Quillon ", "Status:  Disconnected "}}};
  for (const auto& [row, changes, shown] : cases) {
    Demo demo(kQuickEscape, manyAdapters());
    open(demo, kAdapters);
    demo.Press("Down", row);
    const Screen list = demo.Look();
    demo.host.Change(changes);
    demo.Do({"type:d", "Esc", "wait:Adapter Details"});
    EXPECT_EQ(missingFrom(demo.Look(), shown), Lines{}) << demo.Look().Dump();
    demo.Press("Enter");
    EXPECT_EQ(demo.Look(), list);
    demo.Press("Enter");
    EXPECT_EQ(valuesOf(demo.Look(), 6), (Lines{"pnic10", "pnic2"})) << "one that vanished, too";
  }
}

TEST(NetworkDialogs, AdaptersThatTheHostDoesNotTellOfStayChosen) {
  Demo demo({}, manyAdapters());
  demo.Do(kLogIn + "Down" + "Down" + "Enter");
  demo.host.Change(failing("GetPnics", "no adapter"));
  demo.Do({"Enter", "wait:[X] pnic10"});
  EXPECT_EQ(demo.Look().Cells(11, 3, 75), "[X] pnic2");
  EXPECT_EQ(demo.Look().Cells(12, 3, 75), "");
  demo.Do({"type: ", "type:D", "wait:Device Name: pnic10", "Enter", "Enter"});
  EXPECT_EQ(valuesOf(demo.Look(), 6), Lines{"pnic2"});
  EXPECT_TRUE(demo.HasLine("log.err", "no adapter"));
}

}  // namespace
