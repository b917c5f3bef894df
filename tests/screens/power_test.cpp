// SPDX-License-Identifier: MIT
// The console's ways of ending the host's run, on a host whose commands answer as a test wants.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr const char* kMenuAgain = "<Enter> Reset ";
constexpr const char* kRestored = "Default settings are restored. Press <Enter> to";
const std::string kSh = "run\t/bin/sh sh -c ", kVms = "run\t/bin/powerOffVms powerOffVms";
const std::string kAutostop = "run\t/bin/hmx-cmd hmx-cmd -U root hostsvc/autostartmanager/autostop";
const std::string kReset = kSh + "/sbin/firmwareConfig.py --reset-only > /dev/null 2>&1";
const std::string kKilled = "log.err\tRun Command did not terminate normally";
const Json kGone = {{"missing", true}}, kDies = {{"signal", 9}};

struct Operation {
  void (*open)(Demo&);
  std::string event, message;
};
const Operation kOff = {[](Demo& demo) {
                          demo.Do({"F12", "Enter", "type:demo", "Enter"});
                          demo.WaitFor("[ ] Forcefully terminate running VMs, if any ...");
                        },
                        "shutdown.host", "Shutting down host"};
const Operation kRestart = {kOff.open, "reboot.host", "Rebooting host"};
const Operation kRestore = {[](Demo& demo) {
                              logIn(demo);
                              demo.Press("Down", 12);
                              demo.Do({"Enter", "wait:Reset System Configuration now?"});
                            },
                            "restore.factory.defaults", "Restoring factory defaults"};

/// A host that never goes down: what shuts it down fails, and what restarts it does nothing.
Json rehearsing(const Json& tools = Json::object()) {
  Json all = {{"/sbin/poweroff", {{"status", 127}}}, {"/sbin/reboot", {{"status", 0}}}};
  all.update(tools);
  return {{"tools", all}};
}

TEST(Power, DoesWhatTheKeysSayAndNothingElse) {
  const Json any = Json::object(), none = {{"/bin/sh", kGone}}, dead = {{"/sbin/reboot", kDies}};
  const Json badScript = {{"/sbin/firmwareConfig.py", {{"status", 1}}}};
  const Json slowScript = {{"/sbin/firmwareConfig.py", {{"status", 0}, {"seconds", 1}}}};
  const std::string force = "type: ", allAtOnce = "type:" + keyBytes("F11") + "\n\n";
  const Lines off = {kAutostop, kVms, kSh + "poweroff"};
  const Lines restart = {kAutostop, kVms + " --terminate", kSh + "reboot"};
  const Lines notRun = {restart[0], restart[1], restart[2], kKilled};
  const Lines restored = {kRestored, "  Reset System Configuration  ", "   <Enter> Restart Host "};
  const struct {
    const Operation& operation;
    Json tools;
    Lines steps, lines, shows;
  } cases[] = {
      {kOff, any, {"Enter", "F3", force}, {}, {"[X] Force", "<F2> Shut Down  <F11> Restart"}},
      {kOff, any, {force, "Esc"}, {}, {kWelcome, "<F2> Customize"}},
      {kOff, any, {"F2", "Esc", "F2"}, off, {"  Shut Down Host  ", "Shutdown in progress..."}},
      {kRestart,
       any,
       {force, "F11", "Esc"},
       restart,
       {"  Restart Host  ", "Restart in progress.."}},
      {kRestart, dead, {force, "F11"}, notRun, {"[X] Forcefully"}},
      {kOff, none, {"F2"}, off, {"[ ] Forcefully", "terminated.", "<Esc> Cancel"}},
      {kRestore, any, {"Enter", "F2"}, {}, {"Reset System Configuration: C", "<F11> OK  <Esc> C"}},
      {kRestore, any, {"Esc"}, {}, {kMenuAgain}},
      {kRestore, slowScript, {allAtOnce, "Esc", "F11"}, {kReset}, restored},
      {kRestore, badScript, {"F11"}, {kReset}, {kMenuAgain}},
      {kRestore, none, {"F11"}, {kReset}, {kMenuAgain}},
      {kRestore, dead, {"F11", "Enter"}, {kReset, kSh + "reboot -f", kKilled}, {kMenuAgain}},
  };
  for (const auto& [operation, tools, steps, lines, shows] : cases) {
    SCOPED_TRACE(tools.dump() + steps[0]);
    Demo demo(rehearsing(tools), {.environment = {{"ESCDELAY", "25"}}});
    operation.open(demo);
    demo.NewLines();
    demo.Do(steps);
    const Screen screen = demo.WaitFor(shows[0]);
    for (const std::string& text : shows) EXPECT_TRUE(screen.Shows(text)) << screen.Dump();
    EXPECT_EQ(screen.Shows(kRestored), shows[0] == kRestored) << screen.Dump();
    Lines expected = lines;
    if (!lines.empty())
      expected.insert(
          expected.begin(),
          {"log.info\t" + operation.message, "log.info\tInitializing evbuser library",
           "event\t@&!*@*@(evb.user.kiva." + operation.event + ")" + operation.message});
    EXPECT_EQ(demo.NewLines(), expected);
    EXPECT_TRUE(demo.StaysIdle());
    EXPECT_EQ(demo.Stop(), 0);
  }
}

TEST(Power, TheLastWaitDoesNothingButEnd) {
  for (const bool hangUp : {false, true}) {
    Demo demo(rehearsing());
    kRestore.open(demo);
    demo.Do({"F11", std::string("wait:") + kRestored});
    demo.Send("\n");
    demo.WaitForLine("run", "/bin/sh sh -c reboot -f");
    demo.WaitUntil([&](const Screen&) { return demo.DoesNothing(); }, "the last wait");
    demo.Send("x\n\033");
    EXPECT_TRUE(demo.DoesNothing());
    hangUp ? demo.HangUp() : demo.Resize({43, 132});
    EXPECT_EQ(demo.WaitForExit(), 0);
  }
}

TEST(Power, TheSampleHostTakesTheConsoleDownWithIt) {
  for (const Operation* operation : {&kOff, &kRestore}) {
    Demo demo;
    operation->open(demo);
    demo.Press(operation == &kOff ? "F2" : "F11");
    demo.Send("\n");
    EXPECT_EQ(demo.WaitForExit(), 0);
    EXPECT_EQ(demo.host.State()["power"], operation == &kOff ? "off" : "restarting");
    const Demo again({}, std::move(demo.host));
    EXPECT_EQ(again.host.State()["power"], "on");
  }
}

}  // namespace
