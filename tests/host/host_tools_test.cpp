// SPDX-License-Identifier: MIT
#include "system/host_tools.h"

#include <functional>

#include "core/session.h"
#include "system/audit_events.h"
#include "system/ovl_opsagent.h"
#include "tests/support/recording_platform.h"

namespace {

using Lines = std::vector<std::string>;
using Scripts = std::map<std::string, std::string>;

class HostToolsTest : public TestSupport::OnRecordingHost {
 protected:
  HostToolsTest() { Kiva::session().user = "anna"; }
};

const std::string kVersionLine =
    "let v=`halocli --formatter=keyvalue software pak get -n ovl-opsagent | awk '/Version/{ "
    "split($0, kv, \"=\"); split(kv[2], ver, \".\"); print ver[1] }'`; (exit $((v < 3)))";
const std::string kAgent = "run /bin/sh sh -c /etc/init.d/ovl-opsagent ";
const std::string kMigrate = "/usr/lib64/corvo/ovl-opsagent/bin/ovlcfg-vswitch";

TEST_F(HostToolsTest, RunsAndLogs) {
  using namespace Kiva;
  struct Case {
    const char* name;
    Scripts scripts;
    std::function<int()> act;
    int answer;
    Lines lines;
  };
  const Case cases[] = {
      {"shell line that is not found",
       {},
       [] { return RunShellCommand("/no/such/tool 2>/dev/null"); },
       127,
       {"run /bin/sh sh -c /no/such/tool 2>/dev/null"}},
      {"agent request",
       {{"/bin/hmx-cmd", "test $2 = anna && exit 254"}},
       [] {
         return RunHmxCmd({.words = {"hostsvc/start", "now"}}).status;
       },
       254,
       {"run /bin/hmx-cmd hmx-cmd -U anna hostsvc/start now"}},
      {"agent refuses every user",
       {{"/bin/hmx-cmd", "exit 255"}},
       [] { return RunHmxCmd({.words = {"hostsvc/start"}}).status; },
       255,
       {"run /bin/hmx-cmd hmx-cmd -U anna hostsvc/start",
        "log.6 Unable to execute command hmx-cmd hostsvc/start using user anna. Using user kiva",
        "run /bin/hmx-cmd hmx-cmd -U kiva hostsvc/start"}},
      {"refresh",
       {{"/bin/hmx-cmd", "exit 1"}},
       [] { return HmxCmdRefresh(), 0; },
       0,
       {"run /bin/hmx-cmd hmx-cmd -U anna internalsvc/refresh"}},
      {"query without a tool",
       {},
       [] { return int{HmxCmdGetBool("a/b")}; },
       0,
       {"log.6 hmx-cmd invocation: get a/b", "run /bin/hmx-cmd hmx-cmd -U kiva a/b",
        "log.3 hmx-cmd invocation failure: No such file or directory"}},
      {"machines off, gracefully",
       {{"/bin/hmx-cmd", "exit 0"}, {"/bin/powerOffVms", "exit 1"}},
       [] { return PowerOffVms(VmStop::Graceful), 0; },
       0,
       {"run /bin/hmx-cmd hmx-cmd -U anna hostsvc/autostartmanager/autostop",
        "run /bin/powerOffVms powerOffVms"}},
      {"machines off, at once",
       {{"/bin/hmx-cmd", "exit 1"}, {"/bin/powerOffVms", "exit 0"}},
       [] { return PowerOffVms(VmStop::Terminate), 0; },
       0,
       {"run /bin/hmx-cmd hmx-cmd -U anna hostsvc/autostartmanager/autostop",
        "run /bin/powerOffVms powerOffVms --terminate"}},
      {"agent stopped and started",
       {{"/bin/sh", "exit 0"}},
       [] { return StartOvlOpsAgent(StopOvlOpsAgent()), 0; },
       0,
       {"log.6 Stopping ovl-opsagent.", kAgent + "stop",
        "log.6 ovl-opsagent has been successfully stopped.", "log.6 Starting ovl-opsagent.",
        kAgent + "start", "log.6 ovl-opsagent has been successfully started."}},
      {"agent does not stop",
       {{"/bin/sh", "exit 1"}},
       [] { return StartOvlOpsAgent(StopOvlOpsAgent()), 0; },
       0,
       {"log.6 Stopping ovl-opsagent.", kAgent + "stop", "log.3 Failed to stop ovl-opsagent.",
        "log.6 Skipping ovl-opsagent start."}},
      {"agent does not start",
       {{"/bin/sh", "exit 1"}},
       [] { return StartOvlOpsAgent(true), 0; },
       0,
       {"log.6 Starting ovl-opsagent.", kAgent + "start", "log.3 Failed to start ovl-opsagent."}},
      {"agent usable",
       {{"/bin/sh", "exit 0"}},
       [] { return int{IsOvlOpsAgentUsable()}; },
       1,
       {"log.6 Running: /etc/init.d/ovl-opsagent status", kAgent + "status",
        "log.6 ovl-opsagent is present on the system.", "log.6 Running: " + kVersionLine,
        "run /bin/sh sh -c " + kVersionLine, "log.6 ovl-opsagent version >= 3 detected"}},
      {"agent absent",
       {{"/bin/sh", "exit 1"}},
       [] { return int{IsOvlOpsAgentUsable()}; },
       0,
       {"log.6 Running: /etc/init.d/ovl-opsagent status", kAgent + "status",
        "log.6 ovl-opsagent is not present on the system."}},
      {"migration refused",
       {{kMigrate, "printf out; printf err >&2; exit 2"}},
       [] { return int{MigrateWithOvlCfgVswitch("tarn0", "vSwitch1")}; },
       0,
       {"run " + kMigrate + " " + kMigrate + " -m -p tarn0 -I vSwitch1",
        "log.3 Command \"" + kMigrate +
            " -m -p tarn0 -I vSwitch1\" failed (rc=2): (stdout=out, stderr=err)"}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    platform->Clear();
    platform->scripts = one.scripts;
    EXPECT_EQ(one.act(), one.answer);
    EXPECT_EQ(platform->Lines(), one.lines);
  }
}

TEST_F(HostToolsTest, StandardSwitches) {
  using namespace Kiva;
  const std::pair<bool (*)(), std::string> cases[] = {
      {[] { return AddStandardSwitch("vSwitch0"); }, "add -v vSwitch0"},
      {[] { return AddUplinkToStandardSwitch("vSwitch0", "pnic1"); },
       "uplink add -u pnic1 -v vSwitch0"},
      {[] { return RemoveUplinkFromStandardSwitch("vSwitch0", "pnic1"); },
       "uplink remove -u pnic1 -v vSwitch0"},
      {[] { return AddPortGroupToStandardSwitch("Management", "vSwitch0"); },
       "portgroup add -p Management -v vSwitch0"},
  };
  const std::string run = "run /bin/halocli ", command = "halocli network vswitch standard ";
  for (const auto& [change, words] : cases) {
    SCOPED_TRACE(words);
    platform->Clear();
    platform->scripts["/bin/halocli"] = "exit 0";
    EXPECT_TRUE(change());
    platform->scripts["/bin/halocli"] = "printf busy; echo unseen >&2; exit 9";
    EXPECT_FALSE(change());
    const std::string line = command + words;
    EXPECT_EQ(platform->Lines(),
              (Lines{run + line, "log.6 Command \"" + line + "\" succeeded", run + line,
                     "log.3 Command \"" + line + "\" failed (rc=9): busy"}));
  }
}

TEST_F(HostToolsTest, SecondTryHasTheWholeBuffer) {
  platform->scripts["/bin/hmx-cmd"] =
      "cat; test $2 = kiva || exit 255; head -c 300 /dev/zero | tr '\\0' y";
  const auto result = Kiva::RunHmxCmd({.words = {"user/add"}, .input = "x", .outputCapacity = 10});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "x" + std::string(255, 'y'));
  EXPECT_EQ(result.errors, "");
}

TEST_F(HostToolsTest, BooleanQueries) {
  const std::pair<const char*, bool> cases[] = {
      {"echo true", true},   {"printf trueish", true},     {"echo True", false},
      {"echo false", false}, {"echo ' true'", false},      {"exit 0", false},
      {"exit 3", false},     {"echo true; exit 1", false},
  };
  for (const auto& [script, answer] : cases) {
    platform->scripts["/bin/hmx-cmd"] = script;
    EXPECT_EQ(Kiva::HmxCmdGetBool("hmxsvc/auth/lockdown_is_enabled"), answer) << script;
  }
}

TEST_F(HostToolsTest, EventsAndAuditRecords) {
  using namespace Kiva;
  PostAuditEvent("evb.user.kiva.reboot.host", "Rebooting host");
  platform->eventStatus = 7;
  PostAuditEvent("evb.user.kiva.reboot.host", "Rebooting host");
  writeAuditRecord(kLoginDisconnect, "anna", AuditOutcome::Success, {{"reason", "Time out"}});
  EXPECT_EQ(platform->Lines(),
            (Lines{"log.6 Initializing evbuser library",
                   "event @&!*@*@(evb.user.kiva.reboot.host)Rebooting host", "event closed",
                   "log.6 Initializing evbuser library",
                   "log.3 Unable to initialize evbuser library from KIVA. Error code: 7",
                   "audit login.disconnect anna 1 reason=Time out"}));
}

}  // namespace
