// SPDX-License-Identifier: MIT
// What the host is told when its shells are switched, for each way in which its tools can end.
#include "core/session.h"
#include "harness/hosts/recording_platform.h"
#include "system/shell_services.h"
#include "system/shell_timeouts.h"

namespace {

using namespace Kiva;
using Lines = std::vector<std::string>;

const std::string kHmx = "run /bin/hmx-cmd hmx-cmd -U ";
constexpr const char* kKilled = "log.3 Run Command did not terminate normally";

class ShellAccess : public TestSupport::OnRecordingHost {
 protected:
  ShellAccess() { session().user = "anna"; }

  /// The lines of one request to the agent, whose tool does `script`.
  static Lines Request(const std::string& script, const std::string& words) {
    Lines lines = {kHmx + "anna " + words};
    if (script == "exit 255")
      lines.insert(lines.end(), {"log.6 Unable to execute command hmx-cmd " + words +
                                     " using user anna. Using user kiva",
                                 kHmx + "kiva " + words});
    if (script == "kill -9 $$") lines.push_back(kKilled);
    return lines;
  }
};

struct Change {
  const ShellService& service;
  ServiceSwitch direction;
  std::string start, enable, did, fallback, warned;
};
const Change kChanges[] = {
    {kHaloShellService, ServiceSwitch::On, "hostsvc/start_halo_shell", "hostsvc/enable_halo_shell",
     "enabled Halo Shell", "/etc/init.d/HaloShell start", "Halo Shell"},
    {kHaloShellService, ServiceSwitch::Off, "hostsvc/stop_halo_shell", "hostsvc/disable_halo_shell",
     "disabled Halo Shell", "/etc/init.d/HaloShell stop", "Halo Shell"},
    {kSshService, ServiceSwitch::On, "hostsvc/start_ssh", "hostsvc/enable_ssh", "enabled SSH",
     "/etc/init.d/SSH start", "ssh"},
    {kSshService, ServiceSwitch::Off, "hostsvc/stop_ssh", "hostsvc/disable_ssh", "disabled SSH",
     "/etc/init.d/SSH stop", "ssh"}};

TEST_F(ShellAccess, IsSwitchedWhateverTheToolsAnswer) {
  driver->failing = "SetFirewallRuleset";
  for (const Change& change : kChanges)
    for (const std::string agent : {"exit 0", "exit 1", "exit 255", "kill -9 $$", ""})
      for (const std::string script : {"exit 0", "exit 1", "kill -9 $$"}) {
        SCOPED_TRACE(change.did + ", " + agent + ", " + script);
        platform->Clear();
        platform->scripts = {{"/bin/sh", script}};
        if (!agent.empty()) platform->scripts["/bin/hmx-cmd"] = agent;
        switchService(change.service, change.direction);

        const bool fails = agent != "exit 0";
        Lines lines = Request(agent, change.start);
        if (fails)
          lines.insert(lines.end(), {"log.4 Unable to run hmx-cmd to start/stop " + change.warned,
                                     "run /bin/sh sh " + change.fallback});
        if (fails && script.starts_with("kill")) lines.push_back(kKilled);
        if (fails && change.warned == "ssh")
          lines.push_back("log.3 Failed to update firewall sshServer ruleset status: out of order");
        for (const auto& line : Request(agent, change.enable)) lines.push_back(line);
        if (fails)
          lines.push_back("log.4 Unable to run hmx-cmd to enable/disable " + change.warned);
        lines.push_back("log.6 User anna " + change.did);
        EXPECT_EQ(platform->Lines(), lines);
      }
}

TEST_F(ShellAccess, TimeoutsAreReadInMinutes) {
  const std::pair<const char*, std::int64_t> answers[] = {
      {"echo 5400", 90}, {"printf 59", 0},          {"printf 119", 1},
      {"exit 0", 0},     {"echo 5400; exit 1", 0},  {"echo none", 0},
      {"", 0},           {"echo 5400; kill $$", 0}, {"echo 6000000000", 100000000}};
  for (const auto& [script, minutes] : answers) {
    platform->scripts.clear();
    if (*script) platform->scripts["/sbin/halocfg-advcfg"] = script;
    EXPECT_EQ(readShellTimeout(kShellInteractiveTimeout), minutes) << script;
  }
}

TEST_F(ShellAccess, TimeoutsAreStoredByEitherToolAndTakenUpByWhatRuns) {
  const std::string set = "system settings advanced set -o /UserVars/HaloShell";
  for (const char* first : {"exit 0", "exit 1", "exit 255", "kill -9 $$", ""})
    for (const char* second : {"exit 0", "exit 1"}) {
      SCOPED_TRACE(first);
      platform->Clear();
      platform->scripts = {{"/sbin/localcli", second}, {"/bin/sh", "test $1 = /etc/init.d/SSH"}};
      if (*first) platform->scripts["/sbin/halocli"] = first;
      storeShellTimeout(kShellInteractiveTimeout, 0);
      Lines lines = {"run /sbin/halocli halocli " + set + "InteractiveTimeOut -i 0"};
      if (*first == 'k') lines.push_back(kKilled);
      if (first != std::string("exit 0"))
        lines.push_back("run /sbin/localcli localcli " + set + "InteractiveTimeOut -i 0");
      lines.push_back("log.6 Disabled shell interactive timeout");
      EXPECT_EQ(platform->Lines(), lines);
    }
  platform->Clear();
  platform->scripts["/sbin/halocli"] = "exit 0";
  storeShellTimeout(kShellAvailabilityTimeout, 1440);
  EXPECT_EQ(platform->Lines(), (Lines{"run /sbin/halocli halocli " + set + "TimeOut -i 86400",
                                      "run /bin/sh sh /etc/init.d/HaloShell status",
                                      "run /bin/sh sh /etc/init.d/SSH status",
                                      "run /bin/sh sh /etc/init.d/SSH restart",
                                      "log.6 Modified Shell timeout to 1440 minutes"}));
}

}  // namespace
