// SPDX-License-Identifier: MIT
#pragma once

#include "hostseam/tool_host.h"
#include "linux/files.h"

namespace HostLinux {

/// A Linux machine as its own command-line tools see and change it: systemd's units, PAM and the
/// SSH server's configuration, libvirt, and the files of /etc/corvo. What it changes needs root.
class LinuxToolHost : public HostSeam::ToolHost {
 public:
  /// Files are those below `root`; units, machines and processes are always the machine's own.
  explicit LinuxToolHost(std::string root = {}) : files_(std::move(root)) {}

  bool MayChange() override;
  bool MayAdminister(const std::string& user) override;
  bool IsLockdownEnabled() override;
  bool IsLockdownPossible() override;
  void SetLockdown(bool enabled) override;

  std::optional<HostCtl::Adv::OptionValue> ReadOption(const std::string& path) override;
  void WriteOption(const std::string& path, const HostCtl::Adv::OptionValue& value) override;

  void AddStandardSwitch(const std::string& name) override;
  void ChangeUplink(HostSeam::UplinkChange change, const std::string& pnic,
                    const std::string& switchName) override;
  void AddPortGroup(const std::string& name, const std::string& switchName) override;
  void RemoveStandardSwitch(const std::string& name) override;
  void RemovePortGroup(const std::string& name, const std::string& switchName) override;
  void SetPortGroupVlan(const std::string& name, const std::string& switchName,
                        int vlanId) override;
  void RestoreNetwork() override;

  HostSeam::ServiceState GetServiceState(const std::string& name) override;
  void SetServiceRunning(const std::string& name, bool running) override;
  void SetServiceEnabled(const std::string& name, bool enabled) override;
  void SetFirewallRuleset(const std::string& id, bool enabled) override;
  std::vector<HostSeam::Agent> ReadAgents() override;
  void SetAgentsRunning(bool running) override;

  void StopManagedMachines() override;
  void PowerOffMachines(HostSeam::MachineStop how) override;
  std::string SaveConfiguration() override;
  void ResetConfiguration() override;
  std::string WriteLiveCore(const HostSeam::LiveCore& core) override;
  HostSeam::ToolAnswer Ping(const std::string& address, int count) override;

 private:
  Files files_;
};

}  // namespace HostLinux
