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
      {{"Restart Management Agents", "Restart Management", "The management agents", "> Restart "}}};
  for (const bool on : {false, true}) {
    Demo demo(Json{{"services", {{"HaloShell", {{"running", on}}}, {"SSH", {{"running", on}}}}}});
    openTroubleshooting(demo, 0);
    int row = 4;
    for (const auto& states : entries) {
      const Lines& entry = on && !states[1].empty() ? states[1] : states[0];
      const Screen screen = demo.Look();
      SCOPED_TRACE(screen.Dump());
      EXPECT_EQ(screen.Row(row++).find(entry[0]), 4u);
      EXPECT_NE(screen.Row(1).find(entry[1], 40), std::string::npos);
      EXPECT_TRUE(screen.Shows(entry[2]));
      EXPECT_TRUE(screen.Row(21).find(entry[3]) != std::string::npos && screen.Shows("<Esc> Exit"));
      demo.Press("Down");
    }
  }
}

TEST(Troubleshooting, SwitchesOnceForEachLookAtTheAnswer) {
  Demo demo(Json{{"tools", {{"/bin/hmx-cmd", {{"status", 1}}}, {"/bin/sh", {{"status", 1}}}}}});
  openTroubleshooting(demo, 1);
  for (const char* state : {"SSH is Enabled", "SSH is Disabled", "SSH is Enabled"}) {
    demo.Type("\r\r\r");
    EXPECT_TRUE(demo.Look().Shows(state)) << demo.Look().Dump();
  }
  const std::string set = "SetFirewallRuleset sshServer ";
  EXPECT_EQ(demo.host.Journal("hostctl"),
            (Lines{set + "enabled", set + "disabled", set + "enabled"}));
  demo.NewLines();
  demo.Do({"Esc", "Enter", "wait:Enable SSH"});
  EXPECT_EQ(demo.NewLines(), (Lines{"log.info\tCOLS=80, LINES=24", kScript + "HaloShell status",
                                    kScript + "SSH status"}));
}

/// What an operator does in a dialog, how often that is refused, and what the host is told.
struct Use {
  Lines keys;
  int refusals;
  Lines lines;
  Json changes = Json::object();
};

/// The refusals show `refused`.
void use(const Json& host, int row, const char* refused, const Use& one) {
  SCOPED_TRACE(testing::PrintToString(one.keys) + one.changes.dump());
  Demo demo(host);
  openTroubleshooting(demo, row);
  const Screen window = demo.Look();
  demo.Press("Enter");
  demo.host.Change(one.changes);
  demo.NewLines();
  demo.Do(one.keys);
  for (int i = 0; i < one.refusals; ++i) {
    EXPECT_TRUE(demo.Look().Shows(refused)) << demo.Look().Dump();
    demo.Press("Enter");
  }
  EXPECT_EQ(demo.Look(), window);
  EXPECT_EQ(demo.NewLines(), one.lines);
}

constexpr const char* kBounds = "Timeout value must be between 0 (disabled) and 1440";

TEST(Troubleshooting, ShellTimeoutsAreStoredWhereTheyChanged) {
  const std::string path = " system settings advanced set -o /UserVars/HaloShell";
  const std::string set = "run\t/sbin/halocli halocli" + path;
  const Use uses[] = {
      {{"Enter"}, 0, {}},
      {{"type:7", "Esc"}, 0, {}},
      {{"type:010", "Down", "type:x-@30", "Enter"}, 0, {}},
      {{"type:1440", "Enter"},
       0,
       {set + "TimeOut -i 86400", kScript + "HaloShell status", kScript + "SSH status",
        kScript + "SSH restart", "log.info\tModified Shell timeout to 1440 minutes"}},
      {{"Down", "Delete", "Enter"},
       0,
       {set + "InteractiveTimeOut -i 0", "log.info\tDisabled shell interactive timeout"}},
      {{"type:1441", "Down", "Up", "Down", "type:4294967297", "Enter"}, 2, {}},
      {{"type:99999999999", "Down", "type:31", "Enter"},
       1,
       {set + "InteractiveTimeOut -i 1860",
        "log.info\tModified shell interactive timeout to 31 minutes"}}};
  const Json host = {
      {"options",
       {{"/UserVars/HaloShellTimeOut", 600}, {"/UserVars/HaloShellInteractiveTimeOut", 1859}}},
      {"services", {{"SSH", {{"running", true}}}}}};
  for (const Use& one : uses) use(host, 2, kBounds, one);
}

TEST(Troubleshooting, TheConsolesTimeoutIsStoredByTheLibrary) {
  const Json host = {{"options", {{"/UserVars/KivaTimeOut", 90}}}};
  const std::string set = "hostctl\tSetOption /UserVars/KivaTimeOut ";
  const Lines modified = {set + "60", "log.info\tModified Kiva timeout to 1 minutes"};
  use(host, 3, "", {{"wait:[ 1 ", "Enter"}, 0, modified});
  use(host, 3, "", {{"type:0", "Enter"}, 0, {set + "0", "log.info\tDisabled Kiva timeout"}});
  use(host, 3, kBounds, {{"type:1441", "Enter"}, 1, {}});
  const Json full = {{"faults", {{"SetOption", "no {room}"}}}};
  use(host, 3, "no (room)", {{"Enter"}, 1, {"log.err\tno {room}"}, full});
  const Json gone = {{"faults", {{"FindOption", "gone"}}}};
  use(host, 3, "Operation Failed", {{"Enter"}, 1, {"log.err\tgone"}, gone});
}

}  // namespace
