// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>

#include "hosttools/service_names.h"
#include "hosttools/tools.h"

namespace HostTools {

namespace {

constexpr const char* kServiceUser = "kiva";
constexpr int kNotAsThatUser = 255;

using Query = Command<ToolHost>;

ToolAnswer truth(bool value) {
  return {0, value ? "true\n" : "false\n", ""};
}

ToolAnswer lockDown(ToolHost& host, bool enabled) {
  host.SetLockdown(enabled);
  return {};
}

ToolAnswer runShell(ToolHost& host, bool running) {
  host.SetServiceRunning(kHaloShell, running);
  return {};
}

ToolAnswer enable(ToolHost& host, const char* service, bool enabled) {
  host.SetServiceEnabled(service, enabled);
  return {};
}

/// The service first: a firewall that cannot be told keeps no server running, and none away.
ToolAnswer runSsh(ToolHost& host, bool running) {
  host.SetServiceRunning(kSsh, running);
  host.SetFirewallRuleset(kSshRuleset, running);
  return {};
}

constexpr std::array<Query, 14> kQueries = {{
    {"-U USER hmxsvc/auth/lockdown_is_enabled", "true or false: whether the host is locked down",
     Effect::Reads, [](ToolHost& host, const Call&) { return truth(host.IsLockdownEnabled()); }},
    {"-U USER hmxsvc/auth/lockdown_is_possible", "true or false: whether it can be locked down",
     Effect::Reads, [](ToolHost& host, const Call&) { return truth(host.IsLockdownPossible()); }},
    {"-U USER hmxsvc/auth/lockdown_mode_enter",
     "refuses remote logins to all but /etc/corvo/lockdown-exceptions", Effect::Changes,
     [](ToolHost& host, const Call&) { return lockDown(host, true); }},
    {"-U USER hmxsvc/auth/lockdown_mode_exit", "lets everybody log in again who could before",
     Effect::Changes, [](ToolHost& host, const Call&) { return lockDown(host, false); }},
    {"-U USER hostsvc/start_halo_shell",
     "lets people log in on the other virtual terminals (on Linux 2 to 6)", Effect::Changes,
     [](ToolHost& host, const Call&) { return runShell(host, true); }},
    {"-U USER hostsvc/stop_halo_shell", "ends that; whoever is logged in stays", Effect::Changes,
     [](ToolHost& host, const Call&) { return runShell(host, false); }},
    {"-U USER hostsvc/enable_halo_shell", "starts the local shell with the host", Effect::Changes,
     [](ToolHost& host, const Call&) { return enable(host, kHaloShell, true); }},
    {"-U USER hostsvc/disable_halo_shell", "does not start it with the host", Effect::Changes,
     [](ToolHost& host, const Call&) { return enable(host, kHaloShell, false); }},
    {"-U USER hostsvc/start_ssh", "starts the SSH server and enables its ruleset sshServer",
     Effect::Changes, [](ToolHost& host, const Call&) { return runSsh(host, true); }},
    {"-U USER hostsvc/stop_ssh", "stops the SSH server and disables its ruleset", Effect::Changes,
     [](ToolHost& host, const Call&) { return runSsh(host, false); }},
    {"-U USER hostsvc/enable_ssh", "starts the SSH server with the host", Effect::Changes,
     [](ToolHost& host, const Call&) { return enable(host, kSsh, true); }},
    {"-U USER hostsvc/disable_ssh", "does not start it with the host", Effect::Changes,
     [](ToolHost& host, const Call&) { return enable(host, kSsh, false); }},
    {"-U USER hostsvc/autostartmanager/autostop",
     "stops the virtual machines that autostart manages, in its order (on Linux libvirt's, in the "
     "order of /etc/corvo/virtualisation)",
     Effect::Changes,
     [](ToolHost& host, const Call&) {
       host.StopManagedMachines();
       return ToolAnswer{};
     }},
    // The agent keeps nothing of its own, so there is nothing that a refresh could change.
    {"-U USER internalsvc/refresh", "has the management agent read the host anew", Effect::Reads,
     [](ToolHost&, const Call&) { return ToolAnswer{}; }},
}};

/// Whoever calls may try again as another user, so this is known before anything else.
ToolAnswer hmxCmd(ToolHost& host, Commands<ToolHost> commands, const std::string& name,
                  Arguments arguments) {
  const auto option = std::find(arguments.begin(), arguments.end(), "-U");
  const auto user = option == arguments.end() ? option : option + 1;
  if (user != arguments.end() && *user != kServiceUser && !host.MayAdminister(*user))
    return {kNotAsThatUser, "", name + ": that user may not administer this host\n"};
  return runCommand(host, commands, name, arguments);
}

}  // namespace

constinit const Tool<ToolHost> kHmxCmd = {
    "/bin/hmx-cmd",
    "Asks the management agent as USER, an account that may administer the host, or kiva.\n"
    "Status 255 when USER is none of these.\n",
    600, kQueries, hmxCmd};

}  // namespace HostTools
