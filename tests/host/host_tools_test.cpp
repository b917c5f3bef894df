// SPDX-License-Identifier: MIT
#include "system/host_tools.h"

#include "core/session.h"
#include "harness/demo.h"
#include "harness/hosts/recording_platform.h"
#include "system/audit_events.h"
#include "system/lockdown.h"
#include "system/ovl_opsagent.h"
#include "system/shell_services.h"
#include "system/shell_timeouts.h"

namespace {

using namespace Harness;

const std::string kVersionLine =
    "let v=`halocli --formatter=keyvalue software pak get -n ovl-opsagent | awk '/Version/{ "
    "split($0, kv, \"=\"); split(kv[2], ver, \".\"); print ver[1] }'`; (exit $((v < 3)))";
const std::string kHmx = "run /bin/hmx-cmd hmx-cmd ";
const std::string kAgent = "run /bin/sh sh -c /etc/init.d/ovl-opsagent ";
const std::string kMigrate = "/usr/lib64/corvo/ovl-opsagent/bin/ovlcfg-vswitch";

/// How a tool can end; the last one cannot be started.
constexpr const char* kEnds[] = {"exit 0", "exit 1", "exit 255", "kill -9 $$", ""};

/// Adds the lines of a request to the agent, which does `end`.
void addRequest(Lines& lines, const std::string& end, const std::string& words) {
  for (const std::string user : {"anna ", "kiva "}) {
    lines.push_back(kHmx + "-U " + user + words);
    if (end == "kill -9 $$") lines.push_back("log.3 Run Command did not terminate normally");
    if (end != "exit 255") return;
    if (user == "anna ")
      lines.push_back("log.6 Unable to execute command hmx-cmd " + words +
                      " using user anna. Using user kiva");
  }
}

class HostToolsTest : public TestSupport::OnRecordingHost {
 protected:
  HostToolsTest() { Kiva::session().user = "anna"; }
  /// `script` is what every tool does.
  void Expect(const char* script, int (*act)(), int answer, const Lines& lines) {
    SCOPED_TRACE(lines.back());
    platform->Clear();
    platform->scripts = {{"/bin/sh", script}, {"/bin/hmx-cmd", script}, {kMigrate, script}};
    EXPECT_EQ(act(), answer);
    EXPECT_EQ(platform->Lines(), lines);
  }
};

TEST_F(HostToolsTest, RunsAndLogs) {
  using namespace Kiva;
  const auto start = [] { return RunHmxCmd({{"hostsvc/start", "now"}}).status; };
  Expect("test $2 = anna && exit 254", start, 254, {kHmx + "-U anna hostsvc/start now"});
  Expect("", [] { return int{HmxCmdGetBool("a/b")}; }, 0,
         {"log.6 hmx-cmd invocation: get a/b", kHmx + "-U kiva a/b",
          "log.3 hmx-cmd invocation failure: No such file or directory"});
  Expect("printf out; printf err >&2; exit 2",
         [] { return int{MigrateWithOvlCfgVswitch("tarn0", "vSwitch1")}; }, 0,
         {"run " + kMigrate + " " + kMigrate + " -m -p tarn0 -I vSwitch1",
          "log.3 Command \"" + kMigrate +
              " -m -p tarn0 -I vSwitch1\" failed (rc=2): (stdout=out, stderr=err)"});
  Expect("head -c 300 /dev/zero | tr '\\0' y >&2; exit 1",
         [] { return int{switchLockdown(Lockdown::Off)}; }, 0,
         {kHmx + "-U kiva hmxsvc/auth/lockdown_mode_exit",
          "log.3 Disabling lockdown mode failed with error: " + std::string(255, 'y')});
  // The second try has the whole buffer.
  platform->scripts["/bin/hmx-cmd"] =
      "cat; test $2 = kiva || exit 255; head -c 300 /dev/zero | tr '\\0' y";
  const auto result = RunHmxCmd({.words = {"user/add"}, .input = "x", .outputCapacity = 10});
  EXPECT_EQ(result.output, "x" + std::string(255, 'y'));
}

TEST_F(HostToolsTest, NetworkingAgent) {
  using namespace Kiva;
  const Lines stop = {"log.6 Stopping ovl-opsagent.", kAgent + "stop"},
              start = {"log.6 Starting ovl-opsagent.", kAgent + "start"},
              ask = {"log.6 Running: /etc/init.d/ovl-opsagent status", kAgent + "status"},
              version = {"log.6 ovl-opsagent is present on the system.",
                         "log.6 Running: " + kVersionLine, "run /bin/sh sh -c " + kVersionLine,
                         "log.6 ovl-opsagent version >= 3 detected"};
  const auto restart = [] { return StartOvlOpsAgent(StopOvlOpsAgent()), 0; };
  const auto isUsable = [] { return int{IsOvlOpsAgentUsable()}; };
  Expect("exit 0", restart, 0,
         stop + "log.6 ovl-opsagent has been successfully stopped." + start +
             "log.6 ovl-opsagent has been successfully started.");
  Expect("exit 1", restart, 0,
         stop + "log.3 Failed to stop ovl-opsagent." + "log.6 Skipping ovl-opsagent start.");
  Expect(
      "exit 1", [] { return StartOvlOpsAgent(true), 0; }, 0,
      start + "log.3 Failed to start ovl-opsagent.");
  Expect("exit 0", isUsable, 1, ask + version);
  Expect("exit 1", isUsable, 0, ask + "log.6 ovl-opsagent is not present on the system.");
}

TEST_F(HostToolsTest, StandardSwitches) {
  using namespace Kiva;
  const std::pair<bool (*)(), std::string> cases[] = {
      {[] { return AddStandardSwitch("s"); }, "add -v s"},
      {[] { return AddUplinkToStandardSwitch("s", "u"); }, "uplink add -u u -v s"},
      {[] { return RemoveUplinkFromStandardSwitch("s", "u"); }, "uplink remove -u u -v s"},
      {[] { return AddPortGroupToStandardSwitch("p", "s"); }, "portgroup add -p p -v s"},
      {[] { return RemoveStandardSwitch("s"); }, "remove -v s"},
      {[] { return RemovePortGroupFromStandardSwitch("p", "s"); }, "portgroup remove -p p -v s"},
      {[] { return SetVlanOfPortGroup("p", "s", 7); }, "portgroup set -p p -v s -i 7"}};
  for (const auto& [change, words] : cases) {
    platform->Clear();
    platform->scripts["/bin/halocli"] = "exit 0";
    EXPECT_TRUE(change());
    platform->scripts["/bin/halocli"] = "printf busy; echo unseen >&2; exit 9";
    EXPECT_FALSE(change());
    const std::string line = "halocli network vswitch standard " + words;
    EXPECT_EQ(
        platform->Lines(),
        (Lines{"run /bin/halocli " + line, "log.6 Command \"" + line + "\" succeeded",
               "run /bin/halocli " + line, "log.3 Command \"" + line + "\" failed (rc=9): busy"}));
  }
}

TEST_F(HostToolsTest, BooleanQueries) {
  for (const std::string script : {"echo true", "printf trueish", "echo True", "echo false",
                                   "echo ' true'", "exit 0", "echo true; exit 1"}) {
    platform->scripts["/bin/hmx-cmd"] = script;
    const bool answer = script == "echo true" || script == "printf trueish";
    EXPECT_EQ(Kiva::HmxCmdGetBool("hmxsvc/auth/lockdown_is_enabled"), answer) << script;
  }
}

TEST_F(HostToolsTest, ShellsAreSwitchedWhateverTheToolsAnswer) {
  using namespace Kiva;
  using enum ServiceSwitch;
  using S = std::string;
  const std::tuple<ServiceSwitch, S, S> directions[] = {{On, "start", "enable"},
                                                        {Off, "stop", "disable"}};
  driver->failing = "SetFirewallRuleset";
  for (const auto* service : {&kHaloShellService, &kSshService})
    for (const auto& [direction, start, enable] : directions)
      for (const std::string end : kEnds) {
        SCOPED_TRACE(start + ", " + end);
        const bool isSsh = service == &kSshService;
        const S name = isSsh ? "ssh" : "halo_shell", warned = isSsh ? "ssh" : "Halo Shell";
        platform->Clear();
        platform->scripts = {{"/bin/sh", "exit 1"}, {"/bin/hmx-cmd", end}};
        switchService(*service, direction);
        Lines lines,
            fallback = {"log.4 Unable to run hmx-cmd to start/stop " + warned,
                        "run /bin/sh sh /etc/init.d/" + S(isSsh ? "SSH " : "HaloShell ") + start};
        if (isSsh)
          fallback.push_back(
              "log.3 Failed to update firewall sshServer ruleset status: out of order");
        addRequest(lines, end, "hostsvc/" + start + "_" + name);
        if (end != "exit 0") lines = lines + fallback;
        addRequest(lines, end, "hostsvc/" + enable + "_" + name);
        if (end != "exit 0")
          lines = lines + ("log.4 Unable to run hmx-cmd to enable/disable " + warned);
        EXPECT_EQ(platform->Lines(),
                  lines + ("log.6 User anna " + enable + "d " + (isSsh ? "SSH" : warned)));
      }
}

TEST_F(HostToolsTest, ShellTimeoutsAreReadInMinutes) {
  using namespace Kiva;
  const std::pair<const char*, std::int64_t> answers[] = {
      {"echo 5400", 90}, {"printf 119", 1}, {"exit 0", 0}, {"echo 60; exit 1", 0}, {"", 0}};
  for (const auto& [script, minutes] : answers) {
    platform->scripts["/sbin/halocfg-advcfg"] = script;
    EXPECT_EQ(readShellTimeout(kShellInteractiveTimeout), minutes) << script;
  }
}

}  // namespace
