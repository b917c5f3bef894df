// SPDX-License-Identifier: MIT
// The move of the management network onto a new standard switch.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

const std::string kTool = "/bin/halocli network vswitch standard ";
const std::string kRan = "run\t/bin/halocli halocli network vswitch standard ";
const std::string kDone = "wait:Operation Succeeded", kFailed = "wait:Operation Failed";
const Lines kAsk =
    kLogIn + Lines{"choose:Network Restore Options", "wait:Create Standard Switch",
                   "choose:Restore Standard Switch", "wait:Move the management network onto a"};

/// The new lines, without those that a tool's or an event's run brings about by itself.
Lines newLines(Demo& demo) {
  Lines lines = marked(demo.NewLines());
  std::erase_if(lines, [](const std::string& line) {
    const auto has = [&](const char* text) { return line.find(text) != line.npos; };
    return has("ovl-opsagent") || has("Command \"") || has("evbuser");
  });
  for (std::string& line : lines)
    if (line.starts_with(kRan)) line.erase(0, kRan.size());
  return lines;
}

/// Two adapters on each kind of switch, and VLAN 30. The second is the primary.
DemoHost hostOn(const std::string& type, const Json& changes = Json::object()) {
  DemoHost host(Json::parse(R"({"network": {"switches": [
      {"name": "vSwitch0", "uplinks": ["pnic0", "pnic1"], "portGroups": [
        {"name": "Management Network", "vlanId": 30, "activeUplinks": ["pnic1", "pnic0"]},
        {"name": "VM Network", "vlanId": 0}]},
      {"name": "vSwitch1", "uplinks": [], "portGroups": []}], "distributedSwitches": [
      {"name": "vSwitch2", "uplinks": [], "ports": []},
      {"name": "xds0", "uplinks": ["pnic2", "pnic3"], "ports": [
        {"name": "7", "nic": "tarn0", "vlanId": 30, "uplinks": ["pnic3", "pnic2"]}]}]}})"));
  host.Set("/network/kernelNics/0/connection/type", type);
  if (type != "standard") host.Set("/network/kernelNics/0/connection/switch", "xds0");
  host.Change(changes);
  return host;
}

/// What the move says: on both hosts the first free names are the same.
Lines moveOf(const std::string& first, const std::string& second, const std::string& take,
             const std::string& from) {
  Lines lines = parts(
      "- Restoring standard switch vSwitch3;event\t@&!*@*@(evb.user.kiva.standard.switch.restored)"
      "Restoring standard switch vSwitch3;- Creating standard switch vSwitch3;add -v vSwitch3;"
      "- Creating port group Management Network0;portgroup add -p Management Network0 -v vSwitch3;"
      "portgroup set -p Management Network0 -v vSwitch3 -i 30");
  for (const std::string& pnic : {first, second})
    lines = lines + Lines{"- Moving uplink " + pnic, take + pnic + from,
                          "uplink add -u " + pnic + " -v vSwitch3"};
  return lines + parts(
                     "- Moving tarn0;Migrate tarn0 vSwitch3 Management Network0;"
                     "run\t/bin/hmx-cmd hmx-cmd -U root internalsvc/refresh");
}

const Lines kFromStandard = moveOf("pnic1", "pnic0", "uplink remove -u ", " -v vSwitch0"),
            kFromDistributed = moveOf("pnic3", "pnic2", "RemoveDistributedUplink xds0 ", "");

TEST(NetworkMove, TakesVlanAndUplinksAlongInTheirOrder) {
  const std::tuple<std::string, Lines, Lines> cases[] = {
      {"standard", kFromStandard, {"pnic1", "pnic0"}},
      {"distributed", kFromDistributed, {"pnic3", "pnic2"}}};
  for (const auto& [type, lines, uplinks] : cases) {
    Demo demo({}, hostOn(type));
    demo.Do(kAsk);
    newLines(demo);
    demo.Do({"F11", kDone, "wait:Moved tarn0 to Management Network0 on vSwitch3"});
    EXPECT_EQ(newLines(demo), lines);
    const Json network = demo.host.State()["network"], made = network["switches"][2];
    EXPECT_EQ(made["uplinks"], Json(uplinks));
    EXPECT_EQ(made["portGroups"][0], Json({{"name", "Management Network0"}, {"vlanId", 30}}));
    EXPECT_EQ(network["kernelNics"][0]["connection"]["switch"], "vSwitch3");
    demo.Do({"Enter", "gone:Succeeded", "wait:<Enter> Restore"});
  }
}

TEST(NetworkMove, IsUndoneWhenAStepFails) {
  const auto no = [](const std::string& words) {
    return rehearsed({{kTool + words, {{"status", 1}}}});
  };
  const Json stuck = failing("Migrate", "no");
  const auto back = [](const std::string& pnic) {
    return ";- Moving uplink " + pnic + " back;uplink remove -u " + pnic + " -v vSwitch3";
  };
  const auto teamed = [](const std::string& management, const std::string& machines) {
    const std::string of = ";- Restoring the teaming of ", set = ";SetNicTeamingPolicy ";
    return of + "Management Network" + set + "Management Network" + management + of + "VM Network" +
           set + "VM Network" + machines;
  };
  const std::string noSwitch = ";- Removing standard switch vSwitch3;remove -v vSwitch3";
  const std::string noGroup =
      ";- Removing port group Management Network0;portgroup remove -p Management Network0 -v "
      "vSwitch3";
  const std::string noPlace = noGroup + noSwitch;
  const std::string add1 =
      ";uplink add -u pnic1 -v vSwitch0" + teamed(" pnic1 pnic0", " pnic0 pnic1") + noPlace;
  const std::string add0 = ";uplink add -u pnic0 -v vSwitch0" + back("pnic1") + add1;
  const std::string given3 = ";AddDistributedUplink xds0 pnic2" + back("pnic3") +
                             ";AddDistributedUplink xds0 pnic3" + noPlace;
  const std::string stays = ";- Moving tarn0 back;! no;! Moving tarn0 back failed: no";
  const std::string groupFails = "Creating port group Management Network0 failed",
                    nicFails = "Moving tarn0 failed: no";
  const Json lost0 = Json::parse(R"([{"op": "remove", "path": "/switches/0/uplinks/0"},
      {"op": "remove", "path": "/switches/0/portGroups/0/activeUplinks/1"}])");
  const Json left = Json::parse(R"([{"op": "add", "path": "/switches/2", "value":
      {"name": "vSwitch3", "uplinks": [], "portGroups": [
        {"name": "Management Network0", "vlanId": 0}]}}])");
  const Json fails = {{"status", 1}}, noWayBack = rehearsed({{kTool + "portgroup set", fails},
                                                             {kTool + "portgroup remove", fails},
                                                             {kTool + "remove", fails}});
  const struct {
    Json changes;
    long steps;
    std::string failure, undone;
    std::string type = "standard";
    Json lost = Json::array();
  } cases[] = {
      {no("add"), 4, "Creating standard switch vSwitch3 failed", ""},
      {rehearsed({{kTool + "portgroup add", {{"status", 1}, {"stdout", "busy\nx"}}}}), 6,
       groupFails + ": busy", noSwitch},
      {no("portgroup set"), 7, groupFails, noPlace},
      {noWayBack, 7, groupFails,
       noGroup + ";! Removing port group Management Network0 failed" + noSwitch +
           ";! Removing standard switch vSwitch3 failed",
       "standard", left},
      {no("uplink remove -u pnic1"), 9, "Moving uplink pnic1 failed", noPlace},
      {no("uplink add -u pnic1 -v vSwitch3"), 10, "Moving uplink pnic1 failed",
       ";- Moving uplink pnic1 back" + add1},
      {no("uplink remove -u pnic0"), 12, "Moving uplink pnic0 failed", back("pnic1") + add1},
      {no("uplink add -u pnic0 -v vSwitch3"), 13, "Moving uplink pnic0 failed",
       ";- Moving uplink pnic0 back" + add0},
      {no("uplink add -u pnic0"), 13, "Moving uplink pnic0 failed",
       ";- Moving uplink pnic0 back;uplink add -u pnic0 -v vSwitch0;! Moving uplink pnic0 back "
       "failed" +
           back("pnic1") + ";uplink add -u pnic1 -v vSwitch0" + teamed(" pnic1", " pnic1") +
           noPlace,
       "standard", lost0},
      {stuck, 14, nicFails, stays + back("pnic0") + add0},
      {stuck, 14, nicFails, back("pnic2") + given3, "distributed"}};
  for (const auto& [changes, steps, failure, undone, type, lost] : cases) {
    SCOPED_TRACE(changes.dump() + type);
    Demo demo(kQuickEscape, hostOn(type, changes));
    const Json before = demo.host.State()["network"];
    demo.Do(kAsk);
    newLines(demo);
    demo.Do({"F11", kFailed, "wait:" + failure, "wait:Please check the syslog"});
    const Lines& move = type == "standard" ? kFromStandard : kFromDistributed;
    const std::string logged = changes == stuck ? "! no;" : "";
    EXPECT_EQ(newLines(demo),
              Lines(&move[0], &move[0] + steps) + parts(logged + "! " + failure + undone));
    EXPECT_EQ(demo.host.State()["network"], before.patch(lost));
    demo.Do({"Enter", "wait:Move the management network", "Enter", "Esc", "wait:<Enter> Restore"});
    EXPECT_EQ(newLines(demo), Lines{});
  }
}

TEST(NetworkMove, LeavesAnUplinkThatTheSwitchHasLostWhereItIs) {
  Demo demo({}, hostOn("distributed"));
  demo.host.Set("/network/distributedSwitches/1/uplinks", {"pnic2"});
  demo.Do(kAsk + Lines{"F11", kDone});
  EXPECT_EQ(demo.host.State()["network"]["switches"][2]["uplinks"], Json({"pnic2"}));
}

TEST(NetworkMove, LeavesTheOldTeamingsAlsoWhereAllHaveOnePrimary) {
  const Json order = {"pnic0", "pnic1"};
  DemoHost host = hostOn("standard", failing("Migrate", "no"));
  host.Set("/network/switches/0/portGroups/0/activeUplinks", order);
  Demo demo({}, std::move(host));
  demo.Do(kAsk + Lines{"wait:Orvane.", "F11", kFailed});
  const Json old = demo.host.State()["network"]["switches"][0], groups = old["portGroups"];
  EXPECT_EQ(groups[0]["activeUplinks"], order);
  EXPECT_EQ(groups[1].value("activeUplinks", old["uplinks"]), order);
}

TEST(NetworkMove, ShowsItsStepsAndIsAskedForAgainAfterAFailure) {
  const std::string longest(64, 'n');
  Demo demo(rehearsed({{kTool + "uplink add -u pnic0 -v vSwitch2", {{"status", 1}, {"seconds", 1}}},
                       {kTool + "remove", {{"status", 0}, {"seconds", 1}}}}));
  demo.host.Set("/network/switches/0/portGroups/1/name", longest);
  demo.Do(kAsk);
  demo.Send("\033[23~");
  demo.WaitForPassing("Creating port group Management Network0");
  demo.WaitForPassing("Moving uplink pnic0");
  demo.host.Change(
      Json::parse(R"([{"op": "remove", "path": "/network/switches/0/portGroups/1"}])"));
  demo.Send("\n\n");
  demo.WaitForPassing("Removing standard switch vSwitch2");
  demo.Do({kFailed, "Enter", "wait:<F11> OK"});
  EXPECT_TRUE(demo.HasLine("log.err", "Restoring the teaming of " + longest +
                                          " failed: Port group " + longest +
                                          ": it does not exist"));
  demo.host.Change({{"tools", nullptr}});
  demo.Do({"F11", kDone});
}

TEST(NetworkMove, IsRefusedWhereThereIsNothingToMove) {
  const auto nic = [](const std::string& key, const std::string& value) {
    return networkWith(R"({"kernelNics/0/connection/)" + key + R"(": ")" + value + "\"}");
  };
  const std::string nowhere = "tarn0 is on no standard or distributed switch";
  const std::pair<Json, std::string> cases[] = {
      {networkWith(R"({"kernelNics": []})"), "Could not get a suitable management interface"},
      {nic("type", "opaque"), nowhere},
      {nic("portGroup", "x"), "Getting VlanID failed: Port group x: it does not exist"},
      {nic("type", "distributed"), "Distributed switch vSwitch0: it does not exist"},
      {networkWith(R"({"switches/0/uplinks": []})"), "tarn0 has no uplink to take along"},
      {failing("UpdateManagementInterface", "mute"), "mute"},
      {failing("GetVirtualSwitches", "mute"), "Getting VlanID failed: mute"}};
  for (const auto& [changes, cause] : cases) {
    Demo demo({}, kQuickEscape);
    demo.Do(kAsk);
    demo.NewLines();
    demo.host.Change(changes);
    demo.Do({"F11", kFailed, "wait:" + cause});
    EXPECT_EQ(demo.NewLines(), Lines{"log.err\t" + cause});
    demo.Do({"Enter", "wait:<F11> OK", "Esc", "wait:<Enter> Restore"});
  }
  Demo demo(failing("GetDistributedSwitches", "mute"));
  demo.Do(kAsk + Lines{"F11", kDone});
  EXPECT_TRUE(demo.HasLine("log.err", "mute"));
}

}  // namespace
