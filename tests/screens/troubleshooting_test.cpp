// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

const std::string kScript = "run\t/bin/sh sh /etc/init.d/";

TEST(Troubleshooting, ShowsWhatTheHostRunsAndWhatEachEntryDoes) {
  const Lines entries[][2] = {
      {{"Enable Halo Shell", "Halo Shell", "Halo Shell is Disabled", "<Enter> Change "},
       {"Disable Halo Shell", "Halo Shell", "Halo Shell is Enabled", "<Enter> Change "}},
      {{"Enable SSH", "SSH Support", "SSH is Disabled", "<Enter> Change "},
       {"Disable SSH", "SSH Support", "SSH is Enabled", "<Enter> Change "}},
      {{"Modify Halo Shell and SSH", "Modify Halo Shell and", "idle timeout for", "> Change "}},
      {{"Modify KIVA idle timeout", "Modify KIVA idle timeout", "in again in KIVA.", "> Change "}},
      {{"Restart Management Agents", "Restart Management", "services.", "> Restart "}}};
  for (const bool on : {false, true}) {
    Demo demo(Json{{"services", {{"HaloShell", {{"running", on}}}, {"SSH", {{"running", on}}}}}});
    openTroubleshooting(demo, 0);
    int row = 4;
    for (const auto& states : entries) {
      const Lines& entry = states[on && !states[1].empty()];
      const Screen screen = demo.Look();
      EXPECT_EQ(screen.Row(row++).find(entry[0]), 4u) << screen.Dump();
      EXPECT_NE(screen.Row(1).find(entry[1], 40), std::string::npos);
      EXPECT_EQ(missingFrom(screen, {entry[2], entry[3], "<Esc> Exit"}), Lines{});
      demo.Press("Down");
    }
  }
}

TEST(Troubleshooting, SwitchesOnceForEachLookAtTheAnswer) {
  Demo demo(rehearsed({{"/bin/hmx-cmd", {{"status", 1}}}, {"/bin/sh", {{"status", 1}}}}));
  openTroubleshooting(demo, 1);
  for (const char* state : {"Enabled", "Disabled", "Enabled"})
    demo.Do({"type:\r\r\r", std::string("wait:SSH is ") + state});
  const std::string set = "SetFirewallRuleset sshServer ";
  EXPECT_EQ(demo.host.Journal("hostctl"),
            (Lines{set + "enabled", set + "disabled", set + "enabled"}));
  demo.NewLines();
  demo.Do({"Esc", "Enter", "wait:Enable SSH"});
  EXPECT_EQ(demo.NewLines(), (Lines{"log.info\tCOLS=80, LINES=24", kScript + "HaloShell status",
                                    kScript + "SSH status"}));
}

constexpr const char* kBounds = "Timeout value must be between 0 (disabled) and 1440";

/// What an operator does in a dialog, how often that is refused, and what the host is told.
struct Use {
  Lines keys;
  int refusals;
  Lines lines;
  Json changes = Json::object();
  const char* refused = kBounds;
};

void use(Demo& demo, int row, const Use& one) {
  SCOPED_TRACE(testing::PrintToString(one.keys) + one.changes.dump());
  openTroubleshooting(demo, row);
  demo.host.Change(one.changes);
  const Screen window = demo.Look();
  demo.Press("Enter");
  demo.NewLines();
  demo.Do(one.keys);
  for (int i = 0; i < one.refusals; ++i) demo.Do({std::string("wait:") + one.refused, "Enter"});
  EXPECT_EQ(demo.Look(), window);
  EXPECT_EQ(demo.NewLines(), one.lines);
}

const std::string kOption = " system settings advanced set -o /UserVars/HaloShell";
const std::string kSet = "run\t/sbin/halocli halocli" + kOption;
const Lines kSetDay = {kSet + "TimeOut -i 86400"};
const Lines kProbe = {kScript + "HaloShell status", kScript + "SSH status"};
const std::string kRestart = kScript + "SSH restart";
const std::string kDay = "log.info\tModified Shell timeout to 1440 minutes";
const Json kShells = {
    {"options",
     {{"/UserVars/HaloShellTimeOut", 600}, {"/UserVars/HaloShellInteractiveTimeOut", 1859}}},
    {"services", {{"SSH", {{"running", true}}}}}};

TEST(Troubleshooting, ShellTimeoutsAreStoredWhereTheyChanged) {
  const Use uses[] = {
      {{"Enter"}, 0, {}},
      {{"type:7", "Esc"}, 0, {}},
      {{"type:010", "Down", "type:x-@30", "Enter"}, 0, {}},
      {{"wait:[ 0 ", "Enter"}, 0, {}, rehearsed({{"/sbin/halocfg-advcfg", kDies}})},
      {{"type:1440", "Enter"}, 0, kSetDay + kProbe + kRestart + kDay},
      {{"Down", "Delete", "Enter"},
       0,
       {kSet + "InteractiveTimeOut -i 0", "log.info\tDisabled shell interactive timeout"}},
      {{"type:1441", "Down", "Up", "Down", "type:4294967297", "Enter"}, 2, {}},
      {{"type:99999999999999999999", "Down", "type:31", "Enter"},
       1,
       {kSet + "InteractiveTimeOut -i 1860",
        "log.info\tModified shell interactive timeout to 31 minutes"}}};
  for (const Use& one : uses) {
    Demo demo(kShells);
    use(demo, 2, one);
  }
}

TEST(Troubleshooting, TheShellsAreToldWhateverTheToolsCameTo) {
  const Json fails = {{"status", 1}}, slow = {{"status", 0}, {"seconds", 1}};
  const std::pair<Json, Lines> cases[] = {
      {Json::object(), kProbe + kRestart},
      {{{"/sbin/localcli", kDies}}, Lines{kKilled} + kProbe + kRestart},
      {{{"/sbin/localcli", kGone}}, kProbe + kRestart},
      {{{"/sbin/localcli", slow}}, kProbe + kRestart},
      {{{"/etc/init.d/SSH", kDies}}, kProbe + kKilled},
      {{{"/bin/sh", kGone}}, kProbe}};
  for (const auto& [tools, lines] : cases) {
    Demo demo(kShells);
    demo.host.Freeze();  // what is not rehearsed fails, and the restart with it
    Json changes = rehearsed(tools);
    changes["tools"]["/sbin/halocli"] = fails;
    const std::string here = "run\t/sbin/localcli localcli" + kOption + "TimeOut -i 86400";
    use(demo, 2, {{"type:1440\n\033\n\n"}, 0, kSetDay + here + lines + kDay, changes});
    EXPECT_EQ(demo.host.State()["options"]["/UserVars/HaloShellTimeOut"], 600);
  }
}

TEST(Troubleshooting, TheConsolesTimeoutIsStoredByTheLibrary) {
  const std::string set = "hostctl\tSetOption /UserVars/KivaTimeOut ";
  const Lines modified = {set + "60", "log.info\tModified Kiva timeout to 1 minutes"};
  const Json full = failing("SetOption", "no {room}"), gone = failing("FindOption", "gone");
  const Json absent = {{"options", {{"/UserVars/KivaTimeOut", nullptr}}}};
  const Lines noNumber = {"log.err\tSetOption /UserVars/KivaTimeOut: the host has no such number"};
  const Use uses[] = {{{"wait:[ 1 ", "Enter"}, 0, modified},
                      {{"type:0", "Enter"}, 0, {set + "0", "log.info\tDisabled Kiva timeout"}},
                      {{"type:1441", "Enter"}, 1, {}},
                      {{"Enter"}, 1, {"log.err\tno {room}"}, full, "no (room)"},
                      {{"wait:[ 10 ", "Enter"}, 0, {}, gone},
                      {{"type:5", "Enter"}, 1, {"log.err\tgone"}, gone, "Operation Failed"},
                      {{"wait:[ 10 ", "Enter"}, 0, {}, absent},
                      {{"type:5", "Enter"}, 1, noNumber, absent, "the host has no such"}};
  for (const Use& one : uses) {
    Demo demo(Json{{"options", {{"/UserVars/KivaTimeOut", 90}}}});
    use(demo, 3, one);
  }
}

}  // namespace
