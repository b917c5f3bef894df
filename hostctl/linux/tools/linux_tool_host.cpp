// SPDX-License-Identifier: MIT
#include "linux/tools/linux_tool_host.h"

#include <unistd.h>

#include <algorithm>

#include "hostctl/lib/exception.h"
#include "linux/network/network_lock.h"
#include "linux/network/switches.h"
#include "linux/settings.h"
#include "linux/tools/administrators.h"
#include "linux/tools/configuration.h"
#include "linux/tools/live_core.h"
#include "linux/tools/lockdown.h"
#include "linux/tools/machines.h"
#include "linux/tools/ping.h"
#include "linux/tools/services.h"

namespace HostLinux {

using namespace HostSeam;
using HostCtl::Lib::HostCtlException;

namespace {

constexpr const char* kChangeUplink = "ChangeUplink";

std::optional<std::string> switchWith(const Files& files, const std::string& pnic) {
  for (const SwitchRecord& one : readSwitches(files))
    if (std::count(one.uplinks.begin(), one.uplinks.end(), pnic) != 0) return one.name;
  return std::nullopt;
}

/// The console moves adapters between switches; at a shell an operator does so in two steps. One
/// that the switch has already may not be its port yet, where the same command was killed, and one
/// that it has no more may still be.
void addFreeUplink(const Files& files, const std::string& switchName, const std::string& pnic) {
  const std::string has = switchWith(files, pnic).value_or(switchName);
  if (has != switchName || !addUplink(files, switchName, pnic))
    throw HostCtlException(kChangeUplink, pnic, "is an uplink of " + has + " already");
}

void removeItsUplink(const Files& files, const std::string& switchName, const std::string& pnic) {
  if (switchWith(files, pnic) != switchName) {
    finishKilledChange(files, kChangeUplink, pnic);
    throw HostCtlException(kChangeUplink, pnic, "is no uplink of " + switchName);
  }
  removeUplink(files, switchName, pnic);
}

}  // namespace

bool LinuxToolHost::MayChange() {
  return geteuid() == 0;
}
bool LinuxToolHost::MayAdminister(const std::string& user) {
  return mayAdminister(user);
}

bool LinuxToolHost::IsLockdownEnabled() {
  return isLockdownEnabled(files_);
}
bool LinuxToolHost::IsLockdownPossible() {
  return isLockdownPossible(files_);
}
void LinuxToolHost::SetLockdown(bool enabled) {
  setLockdown(files_, enabled);
}

std::optional<HostCtl::Adv::OptionValue> LinuxToolHost::ReadOption(const std::string& path) {
  return readOption(files_, path);
}
void LinuxToolHost::WriteOption(const std::string& path, const HostCtl::Adv::OptionValue& value) {
  writeOption(files_, path, value);
}

void LinuxToolHost::AddStandardSwitch(const std::string& name) {
  addStandardSwitch(files_, name);
}
void LinuxToolHost::ChangeUplink(UplinkChange change, const std::string& pnic,
                                 const std::string& switchName) {
  (change == UplinkChange::Add ? addFreeUplink : removeItsUplink)(files_, switchName, pnic);
}
void LinuxToolHost::AddPortGroup(const std::string& name, const std::string& switchName) {
  addPortGroup(files_, name, switchName);
}
void LinuxToolHost::RemoveStandardSwitch(const std::string& name) {
  removeStandardSwitch(files_, name);
}
void LinuxToolHost::RemovePortGroup(const std::string& name, const std::string& switchName) {
  removePortGroup(files_, name, switchName);
}
void LinuxToolHost::SetPortGroupVlan(const std::string& name, const std::string& switchName,
                                     int vlanId) {
  writeVlanId(files_, {switchName, name}, vlanId);
}
void LinuxToolHost::RestoreNetwork() {
  // Whoever came over that network has lost it in between.
  const StopsPutOff untilThereIsOne;
  clearNetwork(files_);
  autoConfigureNetwork(files_);
}

ServiceState LinuxToolHost::GetServiceState(const std::string& name) {
  return readServiceState(name);
}
void LinuxToolHost::SetServiceRunning(const std::string& name, bool running) {
  setServiceRunning(name, running);
}
void LinuxToolHost::SetServiceEnabled(const std::string& name, bool enabled) {
  setServiceEnabled(name, enabled);
}
void LinuxToolHost::SetFirewallRuleset(const std::string& id, bool enabled) {
  writeFirewallRuleset(files_, id, enabled);
}
std::vector<Agent> LinuxToolHost::ReadAgents() {
  return readAgents(files_);
}
void LinuxToolHost::SetAgentsRunning(bool running) {
  setAgentsRunning(files_, running);
}

void LinuxToolHost::StopManagedMachines() {
  stopManagedMachines(files_);
}
void LinuxToolHost::PowerOffMachines(MachineStop how) {
  powerOffMachines(files_, how);
}
std::string LinuxToolHost::SaveConfiguration() {
  return saveConfiguration(files_);
}
void LinuxToolHost::ResetConfiguration() {
  resetConfiguration(files_);
}
std::string LinuxToolHost::WriteLiveCore(const LiveCore& core) {
  return writeLiveCore(core);
}
ToolAnswer LinuxToolHost::Ping(const std::string& address, int count) {
  return ping(address, count);
}

}  // namespace HostLinux
