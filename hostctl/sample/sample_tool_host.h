// SPDX-License-Identifier: MIT
#pragma once

#include "hostseam/tool_host.h"
#include "sample/store.h"

namespace HostSample {

/// The sample host as its own command-line tools see it.
class SampleToolHost : public HostSeam::StandInHost {
 public:
  /// `console` is the console that goes down with the host, if one runs the tool. Throws
  /// SampleHostError when the host.json of `directory` cannot be used.
  explicit SampleToolHost(const std::filesystem::path& directory,
                          std::optional<pid_t> console = std::nullopt)
      : directory_(directory), store_(directory / "host.json"), console_(console) {}

  std::optional<HostSeam::ToolAnswer> FindRehearsal(const std::string& call) override;
  bool MayChange() override { return true; }
  bool MayAdminister(const std::string& user) override;
  bool IsLockdownEnabled() override { return store_.State().lockdownEnabled; }
  bool IsLockdownPossible() override { return store_.State().lockdownPossible; }

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
  void MoveKernelNic(const std::string& name, const std::string& switchName) override;
  void GoDown(HostSeam::PowerChange how) override;

  std::optional<std::string> FindCertificateFingerprint(const std::string& file,
                                                        const std::string& digest) override;
  std::optional<HostSeam::HostKey> FindHostKey(const std::string& file) override;
  std::optional<std::string> FindPackageVersion(const std::string& name) override;

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
  std::filesystem::path directory_;
  Store store_;
  std::optional<pid_t> console_;
};

}  // namespace HostSample
