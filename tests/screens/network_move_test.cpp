// SPDX-License-Identifier: MIT
// The move of the management network onto a new standard switch.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

const std::string kSwitchTool = "run\t/bin/halocli halocli network vswitch standard ";
const char *const kDone = "Operation Succeeded", *const kFailed = "Operation Failed";
const Lines kAsk =
    kLogIn + Lines{"choose:Network Restore Options", "wait:Create Standard Switch",
                   "choose:Restore Standard Switch", "wait:Move the management network onto a"};

/// The new lines, without those that a tool's or an event's run brings about by itself.
Lines newLines(Demo& demo) {
  Lines lines = marked(demo.NewLines());
  std::erase_if(lines, [](const std::string& line) {
    return line.find("ovl-opsagent") != line.npos || line.find("Command \"") != line.npos ||
           line.find("evbuser") != line.npos;
  });
  for (std::string& line : lines)
    if (line.starts_with(kSwitchTool)) line.erase(0, kSwitchTool.size());
  return lines;
}

Json patch(const std::string& path, const Json& value) {
  return {{{"op", "add"}, {"path", "/network/" + path}, {"value", value}}};
}

/// Two uplinks, the second of which is the management network's primary one, and a VLAN.
DemoHost onStandardSwitch() {
  DemoHost host;
  host.Set("/network/switches/0/uplinks", {"pnic0", "pnic1"});
  host.Set("/network/switches/0/portGroups/0/vlanId", 30);
  host.Set("/network/switches/0/portGroups/0/activeUplinks", {"pnic1", "pnic0"});
  return host;
}

DemoHost onDistributedSwitch() {
  DemoHost host;
  host.Set("/network/distributedSwitches", Json::parse(R"([{"name": "vSwitch2",
      "uplinks": ["pnic1", "pnic3"], "ports": [{"name": "7", "nic": "tarn0", "vlanId": 99}]}])"));
  host.Set("/network/kernelNics/0/connection",
           {{"type", "distributed"}, {"switch", "vSwitch2"}, {"portGroup", "7"}});
  return host;
}

Lines announced(const std::string& name) {
  const std::string text = "Restoring standard switch " + name;
  return {"- " + text, "event\t@&!*@*@(evb.user.kiva.standard.switch.restored)" + text};
}

const std::string kRefresh = ";run\t/bin/hmx-cmd hmx-cmd -U root internalsvc/refresh";

const Lines kMove =
    announced("vSwitch2") +
    parts(
        "- Creating standard switch vSwitch2;add -v vSwitch2;"
        "- Creating port group Management Network0;"
        "portgroup add -p Management Network0 -v vSwitch2;"
        "portgroup set -p Management Network0 -v vSwitch2 -i 30;"
        "- Moving uplink pnic1;uplink remove -u pnic1 -v vSwitch0;uplink add -u pnic1 -v vSwitch2;"
        "- Moving uplink pnic0;uplink remove -u pnic0 -v vSwitch0;uplink add -u pnic0 -v vSwitch2;"
        "- Moving tarn0;Migrate tarn0 vSwitch2 Management Network0" +
        kRefresh);

TEST(NetworkMove, TakesVlanAndUplinksAlongInTheirOrder) {
  Demo demo(kQuickEscape, onStandardSwitch());
  demo.Do(kAsk);
  demo.NewLines();
  demo.Do({"F11", std::string("wait:") + kDone, "wait:Moved tarn0 to Management Network0 on vSwi"});
  EXPECT_EQ(newLines(demo), kMove);
  const Json network = demo.host.State()["network"];
  EXPECT_EQ(network["switches"][2], Json::parse(R"({"name": "vSwitch2",
      "uplinks": ["pnic1", "pnic0"],
      "portGroups": [{"name": "Management Network0", "vlanId": 30}]})"));
  EXPECT_EQ(network["switches"][0]["portGroups"].size(), 2u);
  EXPECT_EQ(network["kernelNics"][0]["connection"]["portGroup"], "Management Network0");
  demo.Do({"Enter", std::string("gone:") + kDone, "wait:<Enter> Restore"});
}

TEST(NetworkMove, IsUndoneWhenAStepFails) {
  const auto no = [](const std::string& words) {
    return rehearsed({{"/bin/halocli network vswitch standard " + words, {{"status", 1}}}});
  };
  Json neverRemoved = no("portgroup set");
  neverRemoved.merge_patch(no("portgroup remove"));
  const std::string noSwitch = ";- Removing standard switch vSwitch2;remove -v vSwitch2",
                    noGroup =
                        ";- Removing port group Management Network0;"
                        "portgroup remove -p Management Network0 -v vSwitch2",
                    nothing = noGroup + noSwitch, away1 = ";uplink remove -u pnic1 -v vSwitch2",
                    back1 =
                        ";uplink add -u pnic1 -v vSwitch0;"
                        "SetNicTeamingPolicy Management Network pnic1 pnic0;"
                        "SetNicTeamingPolicy VM Network pnic0 pnic1" +
                        nothing,
                    title1 = ";- Moving uplink pnic1 back", title0 = ";- Moving uplink pnic0 back",
                    back0 = ";uplink add -u pnic0 -v vSwitch0" + title1 + away1 + back1,
                    moving =
                        ";- Moving tarn0 back;"
                        "! no;! Moving tarn0 back failed: no";
  const struct {
    Json host;
    std::size_t steps;
    std::string failure, undone;
  } cases[] = {
      {no("add"), 4, "Creating standard switch vSwitch2 failed", ""},
      {no("portgroup add"), 6, "Creating port group Management Network0 failed", noSwitch},
      {no("portgroup set"), 7, "Creating port group Management Network0 failed", nothing},
      {no("uplink remove -u pnic1"), 9, "Moving uplink pnic1 failed", nothing},
      {no("uplink add -u pnic1 -v vSwitch2"), 10, "Moving uplink pnic1 failed", title1 + back1},
      {no("uplink remove -u pnic0"), 12, "Moving uplink pnic0 failed", title1 + away1 + back1},
      {no("uplink add -u pnic0 -v vSwitch2"), 13, "Moving uplink pnic0 failed", title0 + back0},
      {failing("Migrate", "no"), 14, "Moving tarn0 failed: no",
       moving + title0 + ";uplink remove -u pnic0 -v vSwitch2" + back0},
      {neverRemoved, 7, "Creating port group Management Network0 failed",
       noGroup + ";! Removing port group Management Network0 failed" + noSwitch}};
  for (const auto& [changes, steps, failure, undone] : cases) {
    SCOPED_TRACE(changes.dump());
    DemoHost host = onStandardSwitch();
    host.Change(changes);
    const Json before = host.State()["network"];
    Demo demo(kQuickEscape, std::move(host));
    demo.Do(kAsk);
    demo.NewLines();
    demo.Do(
        {"F11", std::string("wait:") + kFailed, "wait:" + failure, "wait:Please check the sys"});
    Lines lines(kMove.begin(), kMove.begin() + static_cast<std::ptrdiff_t>(steps));
    if (failure.ends_with(": no")) lines.push_back("! no");
    lines = lines + parts("! " + failure + undone);
    EXPECT_EQ(newLines(demo), lines);
    EXPECT_EQ(demo.host.State()["network"], before);
    demo.Do({"Enter", "wait:Move the management network", "Enter", "Esc", "wait:<Enter> Restore"});
    EXPECT_EQ(demo.NewLines(), Lines{});
  }
}

TEST(NetworkMove, ShowsItsStepsAndIsAskedForAgainAfterAFailure) {
  const std::string words = "/bin/halocli network vswitch standard uplink add -u pnic0";
  Demo demo(rehearsed({{words, {{"status", 1}, {"seconds", 1}}}}), kQuickEscape);
  demo.Do(kAsk);
  demo.Send("\033[23~");
  demo.WaitForPassing("Creating port group Management Network0");
  demo.WaitForPassing("Moving uplink pnic0");
  demo.Send("\n\n");
  demo.Do({std::string("wait:") + kFailed, "Enter", "wait:<F11> OK"});
  demo.host.Change({{"tools", nullptr}});
  demo.Do({"F11", std::string("wait:") + kDone});
}

TEST(NetworkMove, TakesTheUplinksOfADistributedSwitch) {
  const Lines move =
      announced("vSwitch3") + parts(
                                  "- Creating standard switch vSwitch3;add -v vSwitch3;"
                                  "- Creating port group Management Network0;"
                                  "portgroup add -p Management Network0 -v vSwitch3;"
                                  "portgroup set -p Management Network0 -v vSwitch3 -i 99;"
                                  "- Moving uplink pnic1;RemoveDistributedUplink vSwitch2 pnic1;"
                                  "uplink add -u pnic1 -v vSwitch3;"
                                  "- Moving uplink pnic3;RemoveDistributedUplink vSwitch2 pnic3;"
                                  "uplink add -u pnic3 -v vSwitch3;"
                                  "- Moving tarn0");
  const Lines done = parts("Migrate tarn0 vSwitch3 Management Network0" + kRefresh),
              undone = parts(
                  "! no;! Moving tarn0 failed: no;"
                  "- Moving uplink pnic3 back;uplink remove -u pnic3 -v vSwitch3;"
                  "AddDistributedUplink vSwitch2 pnic3;"
                  "- Moving uplink pnic1 back;uplink remove -u pnic1 -v vSwitch3;"
                  "AddDistributedUplink vSwitch2 pnic1;"
                  "- Removing port group Management Network0;"
                  "portgroup remove -p Management Network0 -v vSwitch3;"
                  "- Removing standard switch vSwitch3;remove -v vSwitch3");
  for (const bool works : {true, false}) {
    DemoHost host = onDistributedSwitch();
    if (!works) host.Change(failing("Migrate", "no"));
    const Json before = host.State()["network"];
    Demo demo(kQuickEscape, std::move(host));
    demo.Do(kAsk);
    demo.NewLines();
    demo.Do({"F11", std::string("wait:") + (works ? kDone : kFailed)});
    EXPECT_EQ(newLines(demo), move + (works ? done : undone));
    EXPECT_EQ(demo.host.State()["network"] == before, !works);
  }
}

TEST(NetworkMove, IsRefusedWhereThereIsNothingToMove) {
  const auto connection = [](const char* type) {
    return patch("kernelNics/0/connection",
                 {{"type", type}, {"switch", "vSwitch0"}, {"portGroup", "x"}});
  };
  const std::string nowhere = "tarn0 is on no standard or distributed switch";
  const std::pair<Json, std::string> cases[] = {
      {patch("kernelNics", Json::array()), "Could not get a suitable management interface"},
      {connection("opaque"), nowhere},
      {connection("unknown"), nowhere},
      {connection("standard"), "Getting VlanID failed: Port group x: it does not exist"},
      {connection("distributed"), "Distributed switch vSwitch0: it does not exist"},
      {failing("GetVirtualSwitches", "mute"), "Getting VlanID failed: mute"}};
  for (const auto& [changes, cause] : cases) {
    SCOPED_TRACE(changes.dump());
    Demo demo({}, kQuickEscape);
    demo.Do(kAsk);
    demo.NewLines();
    demo.host.Change(changes);
    demo.Do({"F11", std::string("wait:") + kFailed});
    EXPECT_EQ(missingFrom(demo.Look(), {cause}), Lines{}) << demo.Look().Dump();
    EXPECT_EQ(demo.NewLines(), Lines{"log.err\t" + cause});
    demo.Do({"Enter", "wait:<F11> OK", "Esc", "wait:<Enter> Restore"});
  }
  Demo demo(failing("GetDistributedSwitches", "mute"));
  demo.Do(kAsk + Lines{"F11", std::string("wait:") + kDone});
  EXPECT_TRUE(demo.HasLine("log.err", "mute"));
}

}  // namespace
