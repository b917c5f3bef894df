// SPDX-License-Identifier: MIT
// The console's ways of ending the host's run, on a host whose commands answer as a test wants.
#include <gtest/gtest.h>

#include <csignal>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr const char* kMenuAgain = "<Enter> Reset ";
constexpr const char* kRestored = "Default settings are restored. Press <Enter> to";
const std::string kSh = "run\t/bin/sh sh -c ", kVms = "run\t/bin/powerOffVms powerOffVms";
const std::string kAutostop = "run\t/bin/hmx-cmd hmx-cmd -U root hostsvc/autostartmanager/autostop";
const std::string kReset = kSh + "/sbin/firmwareConfig.py --reset-only > /dev/null 2>&1";

struct Operation {
  Lines way;
  std::string event, message;
};
const Operation kOff = {
    {"F12", "Enter", "type:demo", "Enter", "wait:[ ] Forcefully terminate running VMs, if any ..."},
    "shutdown.host",
    "Shutting down host"};
const Operation kRestart = {kOff.way, "reboot.host", "Rebooting host"};
const Operation kRestore = {
    kLogIn + Lines(12, "Down") + Lines{"Enter", "wait:Reset System Configuration now?"},
    "restore.factory.defaults", "Restoring factory defaults"};

/// A host that never goes down: what shuts it down fails, and what restarts it does nothing.
Json lastingHost(const Json& tools = Json::object()) {
  Json all = {{"/sbin/poweroff", {{"status", 127}}}, {"/sbin/reboot", {{"status", 0}}}};
  all.update(tools);
  return rehearsed(all);
}

TEST(Power, DoesWhatTheKeysSayAndNothingElse) {
  const char *agent = "/bin/hmx-cmd", *vms = "/bin/powerOffVms",
             *script = "/sbin/firmwareConfig.py";
  const Json any = Json::object(), fails = {{"status", 1}}, slow = {{"status", 0}, {"seconds", 1}};
  const Json none = {{"/bin/sh", kGone}}, dead = {{"/sbin/reboot", kDies}};
  const Json diesLate = {{"/sbin/poweroff", {{"signal", 9}, {"seconds", 1}}}};
  const std::string force = "type: ", allAtOnce = "type:" + keyBytes("F11") + "\n\n";
  const std::string offAtOnce = "type:" + keyBytes("F2") + " \n\033";
  const Lines off = {kAutostop, kVms, kSh + "poweroff"}, offDied = off + kKilled;
  const Lines offAnyway = {kAutostop, kKilled, kVms, kKilled, off[2]};
  const Lines restart = {kAutostop, kVms + " --terminate", kSh + "reboot"};
  const Lines restored = {kRestored, "  Reset System Configuration  ", "   <Enter> Restart Host "};
  const Lines going = {"  Shut Down Host  ", "Shutdown in progress..."};
  const Lines question = {"[ ] Forcefully", "terminated.", "<Esc> Cancel"};
  const Lines restarting = {"  Restart Host  ", "Restart in progress.."};
  const std::tuple<Operation, Json, Lines, Lines, Lines> cases[] = {
      {kOff, any, {"Enter", "F3", force}, {}, {"[X] Force", "<F2> Shut Down  <F11> Restart"}},
      {kOff, any, {force, "Esc"}, {}, {kWelcome, "<F2> Customize"}},
      {kOff, any, {"F2", "Esc", "F2"}, off, going},
      {kOff, {{agent, fails}, {vms, fails}}, {"F2"}, off, going},
      {kOff, {{agent, kDies}, {vms, kDies}}, {"F2"}, offAnyway, going},
      {kOff, {{agent, kGone}, {vms, kGone}}, {"F2"}, off, going},
      {kRestart, any, {force, "F11", "Esc"}, restart, restarting},
      {kRestart, dead, {force, "F11"}, restart + kKilled, {"[X] Forcefully"}},
      {kOff, none, {"F2"}, off, question},
      {kOff, diesLate, {offAtOnce}, offDied, question},
      {kRestore, any, {"Enter", "F2"}, {}, {"Reset System Configuration: C", "<F11> OK  <Esc> C"}},
      {kRestore, any, {"Esc"}, {}, {kMenuAgain}},
      {kRestore, {{script, slow}}, {allAtOnce, "Esc", "F11"}, {kReset}, restored},
      {kRestore, {{script, fails}}, {"F11"}, {kReset}, {kMenuAgain}},
      {kRestore, {{script, kDies}}, {"F11"}, {kReset, kKilled}, {kMenuAgain}},
      {kRestore, dead, {"F11", "Enter"}, {kReset, kSh + "reboot -f", kKilled}, {kMenuAgain}}};
  for (const auto& [operation, tools, steps, lines, shows] : cases) {
    SCOPED_TRACE(tools.dump() + steps[0]);
    Demo demo(lastingHost(tools), kQuickEscape);
    demo.Do(operation.way);
    demo.NewLines();
    demo.Do(steps);
    const Screen screen = demo.WaitFor(shows[0]);
    EXPECT_EQ(missingFrom(screen, shows), Lines{}) << screen.Dump();
    EXPECT_EQ(screen.Shows(kRestored), shows[0] == kRestored) << screen.Dump();
    const Lines told = announced(operation.event, operation.message);
    EXPECT_EQ(demo.NewLines(), lines.empty() ? lines : told + lines);
    EXPECT_TRUE(demo.StaysIdle());
    EXPECT_EQ(demo.Stop(), 0);
  }
}

TEST(Power, TheLastWaitDoesNothingButEnd) {
  constexpr int kAskedBefore = 0;
  for (const int cause : {SIGUSR2, SIGWINCH, kHangUp, kAskedBefore}) {
    Demo demo(lastingHost());
    demo.Do(kRestore.way);
    if (cause == kAskedBefore) demo.Signal(SIGUSR2);
    demo.Do({"F11", std::string("wait:") + kRestored});
    demo.Send("\n");
    demo.WaitForLine("run", "/bin/sh sh -c reboot -f");
    if (cause != kAskedBefore) {
      demo.WaitUntil([&](const Screen&) { return demo.DoesNothing(); }, "the last wait");
      demo.Send("x\n\033");
      EXPECT_TRUE(demo.DoesNothing());
    }
    EXPECT_EQ(cause == kAskedBefore ? demo.WaitForExit() : demo.EndBy(cause), 0);
  }
}

TEST(Power, TheSampleHostTakesTheConsoleDownWithIt) {
  for (const Operation* operation : {&kOff, &kRestore}) {
    Demo demo;
    demo.Do(operation->way);
    demo.Press(operation == &kOff ? "F2" : "F11");
    demo.Send("\n");
    EXPECT_EQ(demo.WaitForExit(), 0);
    EXPECT_EQ(demo.host.State()["power"], operation == &kOff ? "off" : "restarting");
    const Demo again({}, std::move(demo.host));
    EXPECT_EQ(again.host.State()["power"], "on");
  }
}

}  // namespace
