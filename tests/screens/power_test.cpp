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
const std::string kKilled = "log.err\tRun Command did not terminate normally";
const Json kGone = {{"missing", true}}, kDies = {{"signal", 9}}, kStarts = {{"status", 0}};

Lines announced(const std::string& id, const std::string& message, const Lines& then = {}) {
  Lines lines = {"log.info\t" + message, "log.info\tInitializing evbuser library",
                 "event\t@&!*@*@(evb.user.kiva." + id + ")" + message};
  lines.insert(lines.end(), then.begin(), then.end());
  return lines;
}

Lines off(const Lines& then) {
  return announced("shutdown.host", "Shutting down host", then);
}
Lines restart(const Lines& then) {
  return announced("reboot.host", "Rebooting host", then);
}
Lines reset(const Lines& then = {}) {
  Lines lines = announced("restore.factory.defaults", "Restoring factory defaults",
                          {kSh + "/sbin/firmwareConfig.py --reset-only > /dev/null 2>&1"});
  lines.insert(lines.end(), then.begin(), then.end());
  return lines;
}

void openShutdown(Demo& demo) {
  demo.Do({"F12", "Enter", "type:demo", "Enter", "wait:Forcefully terminate running VMs, if any"});
}

void openReset(Demo& demo) {
  logIn(demo);
  demo.Press("Down", 12);
  demo.Do({"Enter", "wait:Reset System Configuration now?"});
}

/// A host that does not go down; `tools` answer in another way.
Json rehearsing(const Json& tools = Json::object()) {
  Json all = {{"/sbin/poweroff", kStarts}, {"/sbin/reboot", kStarts}};
  all.update(tools);
  return {{"tools", all}};
}

TEST(Power, DoesWhatTheKeysSayAndNothingElse) {
  const Json dead = {{"/sbin/poweroff", kDies}, {"/sbin/reboot", kDies}};
  const Json none = {{"/bin/sh", kGone}}, any = Json::object();
  const Json deaf = {{"/bin/hmx-cmd", {{"status", 255}}}, {"/bin/powerOffVms", kDies}};
  const Json fails = {{"/sbin/poweroff", {{"status", 127}}}, {"/bin/powerOffVms", {{"status", 1}}}};
  const Lines poweroff = {kAutostop, kVms, kSh + "poweroff"};
  const Lines reboot = {kAutostop, kVms + " --terminate", kSh + "reboot"};
  const std::string asKiva = "run\t/bin/hmx-cmd hmx-cmd -U kiva hostsvc/autostartmanager/autostop";
  const std::string refused =
      "log.info\tUnable to execute command hmx-cmd hostsvc/autostartmanager/autostop using user "
      "root. Using user kiva";
  const struct {
    void (*open)(Demo&);
    Json tools;
    Lines steps, lines;
    const char* shows;
  } cases[] = {
      {openShutdown, any, {"Enter", "F3", "type: ", "type: "}, {}, "[ ] Forcefully"},
      {openShutdown, any, {"Esc"}, {}, kWelcome},
      {openShutdown, any, {"F2", "Esc", "F2"}, off(poweroff), "Shutdown in progress..."},
      {openShutdown, fails, {"F2", "Esc"}, off(poweroff), "Shutdown in progress..."},
      {openShutdown, any, {"type: ", "F11", "Esc"}, restart(reboot), "Restart in progress..."},
      {openShutdown,
       deaf,
       {"F2"},
       off({kAutostop, refused, asKiva, kVms, kKilled, kSh + "poweroff"}),
       "Shutdown in progress..."},
      {openShutdown,
       dead,
       {"type: ", "F11"},
       restart({reboot[0], reboot[1], reboot[2], kKilled}),
       "[X] Forcefully"},
      {openShutdown, none, {"F2"}, off(poweroff), "[ ] Forcefully"},
      {openReset, any, {"Enter", "F2"}, {}, "Reset System Configuration: Confirm"},
      {openReset, any, {"Esc"}, {}, kMenuAgain},
      {openReset, any, {"type:\033[23~\n\n", "Esc", "F11"}, reset(), kRestored},
      {openReset, none, {"F11"}, reset(), kMenuAgain},
      {openReset, {{"/sbin/firmwareConfig.py", {{"status", 1}}}}, {"F11"}, reset(), kMenuAgain},
      {openReset, {{"/sbin/firmwareConfig.py", kDies}}, {"F11"}, reset({kKilled}), kMenuAgain},
      {openReset, dead, {"F11", "Enter"}, reset({kSh + "reboot -f", kKilled}), kMenuAgain},
  };
  for (const auto& [open, tools, steps, lines, shows] : cases) {
    SCOPED_TRACE(tools.dump() + steps[0]);
    Demo demo(rehearsing(tools), {.environment = {{"ESCDELAY", "25"}}});
    open(demo);
    demo.NewLines();
    demo.Do(steps);
    const Screen screen = demo.WaitFor(shows);
    EXPECT_EQ(screen.Shows(kRestored), shows == kRestored) << screen.Dump();
    EXPECT_EQ(demo.NewLines(), lines);
    EXPECT_TRUE(demo.StaysIdle());
    EXPECT_EQ(demo.Stop(), 0);
  }
}

TEST(Power, LooksAsItSays) {
  Demo demo(rehearsing());
  openShutdown(demo);
  Screen screen = demo.Look();
  EXPECT_EQ(screen.Find("Shut Down/Restart"), (Position{3, 13}));
  for (const char* text : {"Remote management software is recommended to safely", "terminated.",
                           "<F2> Shut Down  <F11> Restart               <Esc> Cancel"})
    EXPECT_TRUE(screen.Shows(text)) << screen.Dump();
  demo.Press("F11");
  EXPECT_EQ(demo.Look().Find("Restart Host"), (Position{8, 8})) << demo.Look().Dump();

  Demo other(rehearsing({{"/sbin/firmwareConfig.py", {{"status", 0}, {"seconds", 1}}}}));
  openReset(other);
  EXPECT_EQ(other.Look().Find("Reset System Configuration: "), (Position{7, 13}));
  EXPECT_TRUE(other.Look().Shows("<F11> OK  <Esc> Cancel"));
  other.Send(keyBytes("F11"));
  screen = other.WaitForPassing("Please wait while the default settings are restored.");
  EXPECT_FALSE(screen.Shows("Confirm")) << screen.Dump();
  screen = other.WaitFor(kRestored);
  EXPECT_TRUE(screen.Shows("<Enter> Restart Host") && !screen.Shows("now?")) << screen.Dump();
}

TEST(Power, TheLastWaitDoesNothingButEnd) {
  void (*const ends[])(Demo&) = {[](Demo& demo) { demo.Signal(SIGTERM); },
                                 [](Demo& demo) {
                                   demo.Resize({43, 132});
                                 },
                                 [](Demo& demo) { demo.HangUp(); }};
  for (const auto& end : ends) {
    Demo demo(rehearsing());
    openReset(demo);
    demo.Do({"F11", std::string("wait:") + kRestored});
    demo.Send("\n");
    demo.WaitForLine("run", "/bin/sh sh -c reboot -f");
    demo.WaitUntil([&](const Screen&) { return demo.DoesNothing(); }, "the last wait");
    demo.Send("x\n\033");
    EXPECT_TRUE(demo.DoesNothing());
    end(demo);
    EXPECT_EQ(demo.WaitForExit(), 0);
  }
}

TEST(Power, TheSampleHostTakesTheConsoleDownWithIt) {
  const struct {
    void (*open)(Demo&);
    const char *key, *keys, *power;
  } cases[] = {{openShutdown, "F2", "", "off"}, {openReset, "F11", "\n", "restarting"}};
  for (const auto& [open, key, keys, power] : cases) {
    Demo demo;
    open(demo);
    demo.Press(key);
    demo.Send(keys);
    EXPECT_EQ(demo.WaitForExit(), 0);
    EXPECT_EQ(demo.host.State()["power"], power);
    const Demo again({}, std::move(demo.host));
    EXPECT_EQ(again.host.State()["power"], "on");
  }
}

}  // namespace
