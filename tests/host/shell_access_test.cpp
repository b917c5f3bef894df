// SPDX-License-Identifier: MIT
// What the host is told when its shells are switched, for each way in which its tools can end.
#include "core/session.h"
#include "harness/hosts/recording_platform.h"
#include "system/shell_services.h"
#include "system/shell_timeouts.h"

namespace {

using namespace Kiva;
using Lines = std::vector<std::string>;
using ShellAccess = TestSupport::OnRecordingHost;

/// The last one cannot be started.
constexpr const char* kEnds[] = {"exit 0", "exit 1", "exit 255", "kill -9 $$", ""};
const std::string kKilled = "log.3 Run Command did not terminate normally";

/// Adds the lines of one request to the agent, whose tool does `end`.
void addRequest(Lines& lines, const std::string& end, const std::string& words) {
  lines.push_back("run /bin/hmx-cmd hmx-cmd -U anna " + words);
  if (end == "kill -9 $$") lines.push_back(kKilled);
  if (end != "exit 255") return;
  lines.push_back("log.6 Unable to execute command hmx-cmd " + words +
                  " using user anna. Using user kiva");
  lines.push_back("run /bin/hmx-cmd hmx-cmd -U kiva " + words);
}

TEST_F(ShellAccess, IsSwitchedWhateverTheToolsAnswer) {
  using enum ServiceSwitch;
  const struct {
    const ShellService& service;
    ServiceSwitch direction;
    std::string start, enable, did, warned, script;
  } changes[] = {{kHaloShellService, On, "start_halo_shell", "enable_halo_shell",
                  "enabled Halo Shell", "Halo Shell", "HaloShell start"},
                 {kHaloShellService, Off, "stop_halo_shell", "disable_halo_shell",
                  "disabled Halo Shell", "Halo Shell", "HaloShell stop"},
                 {kSshService, On, "start_ssh", "enable_ssh", "enabled SSH", "ssh", "SSH start"},
                 {kSshService, Off, "stop_ssh", "disable_ssh", "disabled SSH", "ssh", "SSH stop"}};
  session().user = "anna";
  driver->failing = "SetFirewallRuleset";
  for (const auto& [service, direction, start, enable, did, warned, script] : changes)
    for (const std::string end : kEnds) {
      SCOPED_TRACE(did + ", " + end);
      platform->Clear();
      platform->scripts = {{"/bin/sh", "exit 1"}};
      if (!end.empty()) platform->scripts["/bin/hmx-cmd"] = end;
      switchService(service, direction);
      Lines lines;
      addRequest(lines, end, "hostsvc/" + start);
      if (end != "exit 0") {
        lines.push_back("log.4 Unable to run hmx-cmd to start/stop " + warned);
        lines.push_back("run /bin/sh sh /etc/init.d/" + script);
        if (&service == &kSshService)
          lines.push_back("log.3 Failed to update firewall sshServer ruleset status: out of order");
      }
      addRequest(lines, end, "hostsvc/" + enable);
      if (end != "exit 0")
        lines.push_back("log.4 Unable to run hmx-cmd to enable/disable " + warned);
      lines.push_back("log.6 User anna " + did);
      EXPECT_EQ(platform->Lines(), lines);
    }
}

TEST_F(ShellAccess, TimeoutsAreReadInMinutesAndStoredInSeconds) {
  const std::pair<const char*, std::int64_t> answers[] = {
      {"echo 5400", 90}, {"printf 119", 1}, {"exit 0", 0}, {"echo 60; exit 1", 0}, {"", 0}};
  for (const auto& [script, minutes] : answers) {
    if (*script) platform->scripts["/sbin/halocfg-advcfg"] = script;
    EXPECT_EQ(readShellTimeout(kShellInteractiveTimeout), minutes) << script;
    platform->scripts.clear();
  }
  const std::string set = " system settings advanced set -o /UserVars/HaloShellInteractiveTimeOut";
  for (const std::string end : kEnds) {
    platform->Clear();
    platform->scripts = {{"/sbin/localcli", "exit 1"}};
    if (!end.empty()) platform->scripts["/sbin/halocli"] = end;
    storeShellTimeout(kShellInteractiveTimeout, 1440);
    Lines lines = {"run /sbin/halocli halocli" + set + " -i 86400"};
    if (end == "kill -9 $$") lines.push_back(kKilled);
    if (end != "exit 0") lines.push_back("run /sbin/localcli localcli" + set + " -i 86400");
    lines.push_back("log.6 Modified shell interactive timeout to 1440 minutes");
    EXPECT_EQ(platform->Lines(), lines) << end;
  }
}

}  // namespace
