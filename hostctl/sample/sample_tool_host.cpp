// SPDX-License-Identifier: MIT
#include "sample/sample_tool_host.h"

#include "sample/changes.h"

namespace HostSample {

namespace {

template <typename Value>
std::optional<Value> findIn(const std::map<std::string, Value>& values, const std::string& key) {
  const auto found = values.find(key);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

using namespace HostSeam;

std::optional<ToolAnswer> SampleToolHost::FindRehearsal(const std::string& path) {
  return findIn(store_.State().tools, path);
}

bool SampleToolHost::MayAdminister(const std::string& user) {
  const Account* account = findAccount(store_.State(), user);
  return account != nullptr && account->permission;
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

void SampleToolHost::MoveKernelNic(const std::string& name, const std::string& switchName) {
  moveKernelNic(store_, name, switchName);
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

void SampleToolHost::StopManagedMachines() {
  stopMachines(store_, Machines::Managed);
}

void SampleToolHost::PowerOffMachines() {
  stopMachines(store_, Machines::All);
}

}  // namespace HostSample
