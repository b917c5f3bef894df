// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <csignal>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr int kSsh = 1;
constexpr int kShellTimeouts = 2;
constexpr int kKivaTimeout = 3;

const std::string kHmx = "run\t/bin/hmx-cmd hmx-cmd -U root hostsvc/";
const std::string kScript = "run\t/bin/sh sh /etc/init.d/";

TEST(Troubleshooting, ShowsWhatTheHostRunsAndWhatEachEntryDoes) {
  struct Entry {
    const char *label, *title, *text, *state, *footer;
  };
  for (const bool on : {false, true}) {
    Demo demo(Json{{"services", {{"HaloShell", {{"running", on}}}, {"SSH", {{"running", on}}}}}});
    openTroubleshooting(demo, 0);
    int row = 4;
    for (const auto& [label, title, text, state, footer] : std::vector<Entry>{
             {on ? "Disable Halo Shell" : "Enable Halo Shell", "Halo Shell", "Change current state",
              on ? "Halo Shell is Enabled" : "Halo Shell is Disabled", "<Enter> Change "},
             {on ? "Disable SSH" : "Enable SSH", "SSH Support", "Change current state of SSH",
              on ? "SSH is Enabled" : "SSH is Disabled", "<Enter> Change "},
             {"Modify Halo Shell and SSH timeouts", "Modify Halo Shell and SSH timeouts",
              "Modify the number of minutes that", "idle timeout for interactive",
              "<Enter> Change "},
             {"Modify KIVA idle timeout", "Modify KIVA idle timeout", "Modify the number of idle",
              "in again in KIVA.", "<Enter> Change "},
             {"Restart Management Agents", "Restart Management Agents",
              "The management agents are the", "all running services.", "<Enter> Restart "}}) {
      const Screen screen = demo.Look();
      SCOPED_TRACE(screen.Dump());
      EXPECT_EQ(screen.Row(1).find("Troubleshooting Mode Options"), 5u);
      EXPECT_EQ(screen.Row(row++).find(label), 4u);
      EXPECT_NE(screen.Row(1).find(title, 40), std::string::npos);
      for (const char* shown : {text, state, footer, "<Up/Down> Select", "<Esc> Exit"})
        EXPECT_TRUE(screen.Shows(shown)) << shown;
      demo.Press("Down");
    }
  }
}

TEST(Troubleshooting, SwitchesTheShellsAndTellsTheHostInOrder) {
  const Json broken = {{"/bin/hmx-cmd", {{"status", 1}}}, {"/bin/sh", {{"status", 1}}}};
  const std::string noStart = "log.warning\tUnable to run hmx-cmd to start/stop ssh";
  const std::string noEnable = "log.warning\tUnable to run hmx-cmd to enable/disable ssh";
  const struct {
    int row;
    Json changes;
    const char *on, *off;
    Lines switchedOn, switchedOff;
  } cases[] = {{0,
                {},
                "Disable Halo Shell",
                "Enable Halo Shell",
                {kHmx + "start_halo_shell", kHmx + "enable_halo_shell",
                 "log.info\tUser root enabled Halo Shell"},
                {kHmx + "stop_halo_shell", kHmx + "disable_halo_shell",
                 "log.info\tUser root disabled Halo Shell"}},
               {kSsh,
                {{"tools", broken}},
                "Disable SSH",
                "Enable SSH",
                {kHmx + "start_ssh", noStart, kScript + "SSH start",
                 "hostctl\tSetFirewallRuleset sshServer enabled", kHmx + "enable_ssh", noEnable,
                 "log.info\tUser root enabled SSH"},
                {kHmx + "stop_ssh", noStart, kScript + "SSH stop",
                 "hostctl\tSetFirewallRuleset sshServer disabled", kHmx + "disable_ssh", noEnable,
                 "log.info\tUser root disabled SSH"}}};
  for (const auto& [row, changes, on, off, switchedOn, switchedOff] : cases) {
    SCOPED_TRACE(on);
    Demo demo(changes);
    openTroubleshooting(demo, row);
    demo.NewLines();
    demo.Type("\r\r\r");
    EXPECT_TRUE(demo.Look().Shows(on)) << "keys typed meanwhile change nothing";
    EXPECT_EQ(demo.NewLines(), switchedOn);
    demo.Press("Enter");
    EXPECT_TRUE(demo.Look().Shows(off));
    EXPECT_EQ(demo.NewLines(), switchedOff);
    demo.Do({"Enter", "Esc"});
    demo.NewLines();
    demo.Do({"Enter", "wait:Mode Options"});
    EXPECT_EQ(demo.Look().Shows(on), changes.is_null()) << "asked again when it is opened";
    EXPECT_EQ(demo.NewLines(), (Lines{"log.info\tCOLS=80, LINES=24", kScript + "HaloShell status",
                                      kScript + "SSH status"}));
  }
}

/// The lines of storing one of the shells' time-outs, below its common name.
std::string setBy(const std::string& tool, const std::string& rest) {
  return "run\t/sbin/" + tool + " " + tool +
         " system settings advanced set -o /UserVars/HaloShell" + rest;
}

TEST(Troubleshooting, ShellTimeoutsAreStoredWhereTheyChanged) {
  const std::string longer = setBy("halocli", "TimeOut -i 86400");
  const Lines restarted = {kScript + "HaloShell status", kScript + "SSH status",
                           kScript + "SSH restart"};
  const struct {
    const char* name;
    Lines keys;
    int refusals;
    Lines lines;
  } cases[] = {{"untouched", {"Enter"}, 0, {}},
               {"cancelled", {"type:7", "Esc"}, 0, {}},
               {"retyped", {"type:010", "Down", "type:x-@30", "Enter"}, 0, {}},
               {"the longest",
                {"type:1440", "Enter"},
                0,
                {longer, restarted[0], restarted[1], restarted[2],
                 "log.info\tModified Shell timeout to 1440 minutes"}},
               {"no idle time-out restarts nothing",
                {"Down", "Delete", "Enter"},
                0,
                {setBy("halocli", "InteractiveTimeOut -i 0"),
                 "log.info\tDisabled shell interactive timeout"}},
               {"too long", {"type:1441", "Down", "Up", "Down", "type:4294967297", "Enter"}, 2, {}},
               {"one too long",
                {"type:99999999999", "Down", "type:31", "Enter"},
                1,
                {setBy("halocli", "InteractiveTimeOut -i 1860"),
                 "log.info\tModified shell interactive timeout to 31 minutes"}}};
  for (const auto& [name, keys, refusals, lines] : cases) {
    SCOPED_TRACE(name);
    Demo demo(
        {{"options",
          {{"/UserVars/HaloShellTimeOut", 600}, {"/UserVars/HaloShellInteractiveTimeOut", 1859}}},
         {"services", {{"SSH", {{"running", true}}}}}});
    openTroubleshooting(demo, kShellTimeouts);
    const Screen window = demo.Look();
    demo.Press("Enter");
    EXPECT_TRUE(demo.Look().Shows("[ 10 ")) << demo.Look().Dump();
    EXPECT_TRUE(demo.Look().Shows("[ 30 "));
    demo.NewLines();
    demo.Do(keys);
    for (int i = 0; i < refusals; ++i) {
      EXPECT_TRUE(demo.Look().Shows("Invalid timeout value"));
      EXPECT_TRUE(demo.Look().Shows("Timeout value must be between 0 (disabled) and 1440"));
      demo.Press("Enter");
    }
    EXPECT_EQ(demo.Look(), window);
    EXPECT_EQ(demo.NewLines(), lines);
  }
}

TEST(Troubleshooting, KivaTimeoutIsStoredByTheLibrary) {
  const Json noStore = {{"faults", {{"SetOption", "no {room}"}}}};
  const struct {
    const char* name;
    int stored;
    const char *shown, *typed;
    Json changes;
    const char* message;
    Lines lines;
  } cases[] = {{"untouched", 600, "[ 10 ", "", {}, nullptr, {}},
               {"rounded",
                90,
                "[ 1 ",
                "",
                {},
                nullptr,
                {"hostctl\tSetOption /UserVars/KivaTimeOut 60",
                 "log.info\tModified Kiva timeout to 1 minutes"}},
               {"none",
                600,
                "[ 10 ",
                "0",
                {},
                nullptr,
                {"hostctl\tSetOption /UserVars/KivaTimeOut 0", "log.info\tDisabled Kiva timeout"}},
               {"too long", 600, "[ 10 ", "1441", {}, "Invalid timeout value", {}},
               {"refused", 600, "[ 10 ", "5", noStore, "no (room)", {"log.err\tno {room}"}},
               {"gone",
                600,
                "[ 10 ",
                "5",
                {{"options", {{"/UserVars/KivaTimeOut", nullptr}}}},
                "Operation Failed",
                {"log.err\tSetOption /UserVars/KivaTimeOut: the host has no such number"}},
               {"not to be found",
                600,
                "[ 10 ",
                "5",
                {{"faults", {{"FindOption", "gone"}}}},
                "Operation Failed",
                {"log.err\tgone"}}};
  for (const auto& [name, stored, shown, typed, changes, message, lines] : cases) {
    SCOPED_TRACE(name);
    Demo demo(Json{{"options", {{"/UserVars/KivaTimeOut", stored}}}});
    openTroubleshooting(demo, kKivaTimeout);
    const Screen window = demo.Look();
    demo.Press("Enter");
    EXPECT_TRUE(demo.Look().Shows(shown)) << demo.Look().Dump();
    demo.NewLines();
    if (!changes.is_null()) demo.host.Change(changes);
    if (*typed) demo.Type(typed);
    demo.Press("Enter");
    EXPECT_EQ(demo.NewLines(), lines);
    if (message) {
      EXPECT_TRUE(demo.Look().Shows(message)) << demo.Look().Dump();
      demo.Press("Enter");
    }
    EXPECT_EQ(demo.Look(), window);
  }
}

}  // namespace
