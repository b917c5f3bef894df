// SPDX-License-Identifier: MIT
// The window of the network restore options, and its restore of the factory network.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

const Lines kOpen = kLogIn + Lines{"choose:Network Restore Options", "wait:Create Standard Switch"};
const Lines kAsk = kOpen + Lines{"choose:Restore Network Settings", "wait:Yes, Reset"};
const std::string kWarning = "wait:Warning: VMs running", kResult = "wait:<Enter> OK";
const Lines kAnnounced =
    announced("factory.network.restored", "Restoring factory network settings");
const std::string kOff = "run\t/sbin/powerOffVms powerOffVms";
const Lines kClearing = {"hostctl\tDisableNetDumper", "log.info\tClearing Network Config"};
const Lines kBuilding = {"hostctl\tClearNetworkConfig", "log.info\tAuto-Configuring Network"};
const Lines kRestored = kClearing + kBuilding + "hostctl\tAutoConfigNetwork";
const Lines kNot = {"log.warning\tno", "log.err\tError auto-configuring network"};

TEST(NetworkRestore, DescribesEveryRepair) {
  const std::tuple<const char*, Lines, std::string> panes[] = {
      {"Create Standard Switch", {"Create a new standard virtual", "added."}, "Create"},
      {"Create Port Group", {"Create a new port group by name", "added."}, "Create"},
      {"Migrate Tarn NIC to Standard Switch", {"Migrate a tarnnic", "portgroup."}, "Migrate"},
      {"Restore Network Settings", {"Restoring the network", "software."}, "Restart"},
      {"Restore Standard Switch", {"All management network", "they are."}, "Restore"},
      {"Restore xDS", {"Reconfigure properties of", "moved to it."}, "Restore"}};
  Demo demo({}, kQuickEscape);
  demo.Do(kOpen);
  for (const auto& [title, texts, action] : panes) {
    const Screen screen = demo.Look();
    SCOPED_TRACE(screen.Dump());
    EXPECT_EQ((Lines{screen.Cells(1, 3, 40), screen.Cells(1, 42, 79), focusedText(screen)}),
              (Lines{"Network Restore Options", title, title}));
    EXPECT_EQ(missingFrom(screen, texts), Lines{});
    EXPECT_EQ(screen.Cells(21, 41, 79),
              "<Enter> " + action + std::string(19 - action.size(), ' ') + "<Esc> Exit");
    demo.Press("Down");
  }
  demo.Do({"Esc", "wait:System Customization", "wait:To view various network restore"});
}

TEST(NetworkRestore, RestoresTheFactoryNetworkAsFarAsHostAndOperatorLetIt) {
  const auto off = [](const Json& answer) { return rehearsed({{"/sbin/powerOffVms", answer}}); };
  const auto fault = [](Json host, const char* operation) {
    host.merge_patch(failing(operation, "no"));
    return host;
  };
  const Json any = Json::object(), idle = {{"machines", Json::array()}}, bad = off({{"status", 1}});
  const Json mute = fault(idle, "HasRunningVirtualMachines");
  const Lines kept = {kClearing[0], "log.err\tError powering off VMs"}, unsure = {"log.err\tno"};
  const std::string done = " Done.", failed = " Failed.", vms = "Powering Off VMs.",
                    net = "Auto-configuring network.";
  const Lines yes = {"F11", kWarning, "type:yY ", "F11", kWarning, "Enter", kResult}, go = {"F11"};
  const Lines no = {"F11", kWarning, "Esc"};
  const struct {
    Json host;
    Lines steps, lines, shows;
  } cases[] = {
      {any, {"Enter", "F2", "Esc"}, {}, {}},
      {any, no, kAnnounced, {}},
      {any, yes, Lines{kOff} + kRestored, {vms + done, net + done}},
      {idle, go, kRestored, {net + done, ""}},
      {bad, yes, Lines{kOff} + kept, {vms + failed, ""}},
      {off(kDies), yes, Lines{kOff, kKilled} + kept, {vms + failed, ""}},
      {fault(bad, "DisableNetDumper"), yes, Lines{kOff} + kNot, {vms + failed, ""}},
      {fault(any, "DisableNetDumper"), yes, Lines{kOff} + kNot, {vms + done, "Failed."}},
      {fault(idle, "DisableNetDumper"), go, kNot, {"Failed.", ""}},
      {fault(idle, "ClearNetworkConfig"), go, kClearing + kNot, {net + failed, ""}},
      {fault(idle, "AutoConfigNetwork"), go, kClearing + kBuilding + kNot, {net + failed, ""}},
      {mute, no, unsure + kAnnounced, {}},
      {mute, yes, unsure + kOff + kRestored, {vms + done, net + done}},
  };
  for (const auto& [host, steps, lines, shows] : cases) {
    SCOPED_TRACE(host.dump() + testing::PrintToString(steps));
    Demo demo(host, kQuickEscape);
    demo.Do(kAsk);
    demo.NewLines();
    demo.Do(steps);
    if (!shows.empty()) {
      const Screen screen = demo.WaitFor("<Enter> OK");
      EXPECT_EQ((Lines{screen.Cells(13, 12, 68), screen.Cells(14, 12, 68)}), shows);
      EXPECT_EQ(missingFrom(screen, {"  Restore Network Settings  ", "Please wait "}), Lines{});
      EXPECT_EQ(demo.NewLines(), lines);
      demo.Do({"Esc", "F11", kResult, "Enter"});
    }
    demo.Do({"gone:Factory Settings", "wait:<Enter> Restart"});
    EXPECT_EQ(demo.NewLines(), shows.empty() ? lines : kAnnounced);
  }
}

TEST(NetworkRestore, AToolMayHangAndTheResultStayUnread) {
  Demo demo({{"tools", {{"/sbin/powerOffVms", {{"status", 0}, {"seconds", 2}}}}},
             {"options", {{"/UserVars/KivaTimeOut", 120}}}},
            {.arguments = {"--clock-speed", "20"}});
  demo.Do(kAsk + Lines{"F11", kWarning});
  demo.Send("\n");
  demo.WaitForPassing("Powering Off VMs.");
  demo.Send("\n\n");
  demo.Do({kResult});
  EXPECT_FALSE(demo.HasLine("log.info", "Restoring factory network settings"));
  demo.WaitForLine("event", kAnnounced[2].substr(6));
  demo.WaitForGone("Network Restore Options");
}

TEST(NetworkRestore, TheProcessMayEndAnywhereAndWhatWasDoneIsAnnouncedOnce) {
  const Lines asked = {"F11", kWarning}, done = asked + Lines{"Enter", kResult};
  const std::tuple<Lines, Lines, bool> cases[] = {
      {asked, {}, false},
      {done, kAnnounced, false},
      {done + Lines{"Enter", "wait:<Enter> Restart"}, {}, true}};
  for (const int cause : {SIGTERM, SIGWINCH, kHangUp})
    for (const auto& [keys, lines, before] : cases) {
      SCOPED_TRACE(std::to_string(cause) + testing::PrintToString(keys));
      Demo demo;
      demo.Do(kAsk + keys);
      EXPECT_EQ(demo.HasLine("event", kAnnounced[2].substr(6)), before);
      demo.NewLines();
      const Lines resized(cause == SIGWINCH, "log.info\tResized window to 132x43");
      EXPECT_EQ(demo.EndBy(cause), 0);
      EXPECT_EQ(demo.NewLines(), resized + lines);
    }
}

TEST(NetworkRestore, TheMenuFollowsARestoredNetwork) {
  Demo demo({{"machines", Json::array()}, {"network", {{"kernelNics", Json::array()}}}},
            kQuickEscape);
  demo.Do(kAsk + Lines{"F11", kResult, "Enter", "wait:<Enter> Restart", "Esc",
                       "wait:To view various network restore", "Up"});
  EXPECT_EQ(focusedText(demo.Look()), "Test Management Network");
}

}  // namespace
