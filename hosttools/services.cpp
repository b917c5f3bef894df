// SPDX-License-Identifier: MIT
#include <array>

#include "hosttools/tools.h"

namespace HostTools {

namespace {

using HostSeam::Agent;
using HostSeam::ServiceState;

/// Statuses of init scripts.
constexpr int kNotRunning = 3;
constexpr int kNotInstalled = 5;

ToolAnswer changed(const Call& call, const char* how) {
  return {0, call.name + how, ""};
}

/// The answer for a service that this host does not have.
std::optional<ToolAnswer> refusal(ServiceState state, const Call& call) {
  if (state != ServiceState::Absent) return std::nullopt;
  return ToolAnswer{kNotInstalled, "", call.name + " is not installed\n"};
}

ToolAnswer startService(ToolHost& host, const Call& call) {
  if (auto no = refusal(host.GetServiceState(call.name), call)) return *no;
  host.SetServiceRunning(call.name, true);
  return changed(call, " started\n");
}

ToolAnswer stopService(ToolHost& host, const Call& call) {
  const ServiceState state = host.GetServiceState(call.name);
  if (auto no = refusal(state, call)) return *no;
  if (state == ServiceState::Stopped) return {1, call.name + " is not running\n", ""};
  host.SetServiceRunning(call.name, false);
  return changed(call, " stopped\n");
}

ToolAnswer restartService(ToolHost& host, const Call& call) {
  if (auto no = refusal(host.GetServiceState(call.name), call)) return *no;
  host.SetServiceRunning(call.name, false);
  host.SetServiceRunning(call.name, true);
  return changed(call, " restarted\n");
}

ToolAnswer showService(ToolHost& host, const Call& call) {
  const ServiceState state = host.GetServiceState(call.name);
  if (auto no = refusal(state, call)) return *no;
  if (state == ServiceState::Running) return changed(call, " is running\n");
  return {kNotRunning, call.name + " is not running\n", ""};
}

constexpr std::array<Command<ToolHost>, 4> kServiceActions = {{
    {"start", "starts the service", Effect::Changes, startService},
    {"stop", "stops it; status 1 when it did not run", Effect::Changes, stopService},
    {"restart", "stops and starts it", Effect::Changes, restartService},
    {"status", "status 0 when it runs, 3 when it does not, 5 when this host does not have it",
     Effect::Reads, showService},
}};

ToolAnswer setAgents(ToolHost& host, bool running) {
  host.SetAgentsRunning(running);
  return {};
}

ToolAnswer showAgents(ToolHost& host, const Call&) {
  ToolAnswer answer;
  for (const Agent& agent : host.ReadAgents()) {
    answer.output += agent.name + (agent.running ? " is running\n" : " is not running\n");
    if (!agent.running) answer.status = kNotRunning;
  }
  return answer;
}

constexpr std::array<Command<ToolHost>, 4> kAgentActions = {{
    {"start", "starts the management agents", Effect::Changes,
     [](ToolHost& host, const Call&) { return setAgents(host, true); }},
    {"stop", "stops them", Effect::Changes,
     [](ToolHost& host, const Call&) { return setAgents(host, false); }},
    {"restart", "stops and starts them", Effect::Changes,
     [](ToolHost& host, const Call&) {
       host.SetAgentsRunning(false);
       return setAgents(host, true);
     }},
    {"status", "a line for each; status 0 when all run, else 3", Effect::Reads, showAgents},
}};

}  // namespace

constinit const Tool<ToolHost> kInitScripts = {
    "/etc/init.d/HaloShell /etc/init.d/SSH /etc/init.d/ovl-opsagent",
    "The local shell, the SSH server and the network-virtualisation agent, one script each.\n", 420,
    kServiceActions};

constinit const Tool<ToolHost> kServicesScript = {
    "/sbin/services.sh",
    "The management agents: the programs that let remote management software at the host. On\n"
    "Linux the units listed in /etc/corvo/agents.\n",
    300, kAgentActions};

}  // namespace HostTools
