// SPDX-License-Identifier: MIT
#include "sample/sample_tool_host.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>

#include "hostctl/lib/exception.h"
#include "sample/backup.h"
#include "sample/changes.h"
#include "sample/file_tools.h"
#include "sample/fresh_network.h"
#include "sample/repair_changes.h"
#include "sample/stop_later.h"
#include "sample/switch_changes.h"

namespace HostSample {

namespace {

/// In the order in which they stop and start.
constexpr std::array kAgents = {"mgmtd", "evbd"};

/// As long as an operator can read that the host goes down.
constexpr std::chrono::seconds kUntilDown{2};

template <typename Value>
std::optional<Value> findIn(const std::map<std::string, Value>& values, const std::string& key) {
  const auto found = values.find(key);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

using namespace HostSeam;

std::optional<ToolAnswer> SampleToolHost::FindRehearsal(const std::string& call) {
  const auto rehearsal = findIn(store_.State().tools, call);
  if (!rehearsal) return std::nullopt;
  if (rehearsal->missing) return ToolAnswer{kNoSuchTool, "", call + ": not found\n"};
  sleep(static_cast<unsigned>(rehearsal->seconds));
  if (rehearsal->signal != 0) raise(rehearsal->signal);
  return rehearsal->answer;
}

bool SampleToolHost::MayAdminister(const std::string& user) {
  const Account* account = findAccount(store_.State(), user);
  return account != nullptr && account->permission;
}

void SampleToolHost::SetLockdown(bool enabled) {
  setLockdown(store_, enabled);
}

std::optional<HostCtl::Adv::OptionValue> SampleToolHost::ReadOption(const std::string& path) {
  return findIn(store_.State().options, path);
}

void SampleToolHost::WriteOption(const std::string& path, const HostCtl::Adv::OptionValue& value) {
  setOption(store_, path, value);
}

void SampleToolHost::AddStandardSwitch(const std::string& name) {
  addSwitch(store_, name);
}

void SampleToolHost::ChangeUplink(UplinkChange change, const std::string& pnic,
                                  const std::string& switchName) {
  (change == UplinkChange::Add ? addUplink : removeUplink)(store_, pnic, switchName);
}

void SampleToolHost::AddPortGroup(const std::string& name, const std::string& switchName) {
  addPortGroup(store_, name, switchName);
}

void SampleToolHost::RemoveStandardSwitch(const std::string& name) {
  removeSwitch(store_, name);
}

void SampleToolHost::RemovePortGroup(const std::string& name, const std::string& switchName) {
  removePortGroup(store_, name, switchName);
}

void SampleToolHost::SetPortGroupVlan(const std::string& name, const std::string& switchName,
                                      int vlanId) {
  setVlanId(store_, {switchName, name}, static_cast<std::int16_t>(vlanId));
}

void SampleToolHost::RestoreNetwork() {
  clearNetwork(store_);
  autoConfigureNetwork(store_);
}

void SampleToolHost::MoveKernelNic(const std::string& name, const std::string& switchName) {
  moveOpaqueNic(store_, name, switchName);
}

void SampleToolHost::GoDown(PowerChange how) {
  setPower(store_, how == PowerChange::Off ? Power::Off : Power::Restarting);
  if (console_) stopLater(*console_, kUntilDown);
}

std::optional<std::string> SampleToolHost::FindCertificateFingerprint(const std::string& file,
                                                                      const std::string& digest) {
  const auto digests = findIn(store_.State().certificates, file);
  return digests ? findIn(*digests, digest) : std::nullopt;
}

std::optional<HostKey> SampleToolHost::FindHostKey(const std::string& file) {
  return findIn(store_.State().hostKeys, file);
}

std::optional<std::string> SampleToolHost::FindPackageVersion(const std::string& name) {
  return findIn(store_.State().packages, name);
}

ServiceState SampleToolHost::GetServiceState(const std::string& name) {
  const auto running = findIn(store_.State().servicesRunning, name);
  if (!running) return ServiceState::Absent;
  return *running ? ServiceState::Running : ServiceState::Stopped;
}

void SampleToolHost::SetServiceRunning(const std::string& name, bool running) {
  setServiceRunning(store_, name, running);
}

void SampleToolHost::SetServiceEnabled(const std::string& name, bool enabled) {
  setServiceEnabled(store_, name, enabled);
}

void SampleToolHost::SetFirewallRuleset(const std::string& id, bool enabled) {
  setFirewallRuleset(store_, id, enabled);
}

std::vector<Agent> SampleToolHost::ReadAgents() {
  std::vector<Agent> agents;
  for (const char* name : kAgents)
    if (const auto running = findIn(store_.State().servicesRunning, name))
      agents.push_back({name, *running});
  return agents;
}

void SampleToolHost::SetAgentsRunning(bool running) {
  for (const Agent& agent : ReadAgents()) setServiceRunning(store_, agent.name, running);
}

void SampleToolHost::StopManagedMachines() {
  stopMachines(store_, Machines::Managed);
}

void SampleToolHost::PowerOffMachines(MachineStop) {
  stopMachines(store_, Machines::All);
}

std::string SampleToolHost::SaveConfiguration() {
  return saveBackup(directory_);
}

void SampleToolHost::ResetConfiguration() {
  saveBackup(directory_);
  resetState(store_, readFile(builtInSample() / "host.json"));
}

/// There is no process to look into, so the file says which it would have been.
std::string SampleToolHost::WriteLiveCore(const LiveCore& core) {
  if (GetServiceState(core.process) != ServiceState::Running)
    throw HostCtl::Lib::HostCtlException("There is no running process " + core.process + ".");
  const auto file = std::filesystem::path(core.folder) / (core.output + ".core");
  replaceFile(directory_ / "root" / file.relative_path(), "core of " + core.process + "\n");
  return file;
}

ToolAnswer SampleToolHost::Ping(const std::string& address, int) {
  const auto& reachable = store_.State().reachable;
  if (std::find(reachable.begin(), reachable.end(), address) != reachable.end())
    return {0, address + " answers\n", ""};
  return {1, address + " does not answer\n", ""};
}

}  // namespace HostSample
