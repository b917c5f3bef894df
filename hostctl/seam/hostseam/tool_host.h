// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hostctl/adv/advanced_option.h"

namespace HostSeam {

/// What a command-line tool leaves behind: its exit status (0 to 255) and its two outputs.
struct ToolAnswer {
  int status = 0;
  std::string output;
  std::string error;
  bool operator==(const ToolAnswer&) const = default;
};

/// The status that a shell answers for a program that is not there.
inline constexpr int kNoSuchTool = 127;

struct HostKey {
  int bits = 0;
  std::string fingerprint;
  std::string comment;
  std::string type;
};

enum class ServiceState { Absent, Stopped, Running };
enum class UplinkChange { Add, Remove };
/// Which way the virtual machines stop: asked to shut down, or without asking.
enum class MachineStop { Ask, Terminate };
/// Which way the host itself goes down.
enum class PowerChange { Off, Restart };

/// One of the programs that let remote management software at the host.
struct Agent {
  std::string name;
  bool running = false;
};

/// A core of a running process, which goes on running: the process by its name, the first part of
/// the file's name, and the folder for it.
struct LiveCore {
  std::string process;
  std::string output;
  std::string folder;
};

/// What the host's own command-line tools need of it beyond the host-control library. The tools run
/// in processes of their own, so every change is on the host when the call returns. A change that
/// the host refuses throws HostCtl::Lib::HostCtlException with the text for the operator.
class ToolHost {
 public:
  virtual ~ToolHost() = default;

  /// The answer that a host which rehearses failures wants: `call` is the path of a program, also
  /// with the first words of a call of it.
  virtual std::optional<ToolAnswer> FindRehearsal(const std::string& call) {
    static_cast<void>(call);
    return std::nullopt;
  }
  /// Whether this process may change the host at all.
  virtual bool MayChange() = 0;
  virtual bool MayAdminister(const std::string& user) = 0;

  virtual bool IsLockdownEnabled() = 0;
  virtual bool IsLockdownPossible() = 0;
  virtual void SetLockdown(bool enabled) = 0;

  virtual std::optional<HostCtl::Adv::OptionValue> ReadOption(const std::string& path) = 0;
  virtual void WriteOption(const std::string& path, const HostCtl::Adv::OptionValue& value) = 0;

  virtual void AddStandardSwitch(const std::string& name) = 0;
  virtual void ChangeUplink(UplinkChange change, const std::string& pnic,
                            const std::string& switchName) = 0;
  virtual void AddPortGroup(const std::string& name, const std::string& switchName) = 0;
  /// These two refuse what a kernel NIC is on; a switch gives its uplinks back.
  virtual void RemoveStandardSwitch(const std::string& name) = 0;
  virtual void RemovePortGroup(const std::string& name, const std::string& switchName) = 0;
  /// 0 for none, 4095 for all.
  virtual void SetPortGroupVlan(const std::string& name, const std::string& switchName,
                                int vlanId) = 0;
  /// Puts the network back to what a fresh host has; what was set before is forgotten.
  virtual void RestoreNetwork() = 0;

  virtual ServiceState GetServiceState(const std::string& name) = 0;
  virtual void SetServiceRunning(const std::string& name, bool running) = 0;
  /// Whether the service starts with the host.
  virtual void SetServiceEnabled(const std::string& name, bool enabled) = 0;
  virtual void SetFirewallRuleset(const std::string& id, bool enabled) = 0;

  virtual std::vector<Agent> ReadAgents() = 0;
  virtual void SetAgentsRunning(bool running) = 0;

  /// Stops the machines that the host's autostart manages, in its order.
  virtual void StopManagedMachines() = 0;
  virtual void PowerOffMachines(MachineStop how) = 0;

  /// Saves the host's configuration; the name of what was saved.
  virtual std::string SaveConfiguration() = 0;
  /// Puts the configuration back to what the host was delivered with, after saving it.
  virtual void ResetConfiguration() = 0;
  /// The file that was written.
  virtual std::string WriteLiveCore(const LiveCore& core) = 0;
  /// Asks `address` for so many echoes, a second apart: the answer of the ping tool.
  virtual ToolAnswer Ping(const std::string& address, int count) = 0;
};

/// A host that also stands in for programs which a real machine brings itself: its shell, its key
/// generators, the tool of its network-virtualisation agent, and what shuts it down.
class StandInHost : public ToolHost {
 public:
  /// `digest` is "sha1" or "sha256"; the text is colon-separated hexadecimal.
  virtual std::optional<std::string> FindCertificateFingerprint(const std::string& file,
                                                                const std::string& digest) = 0;
  virtual std::optional<HostKey> FindHostKey(const std::string& file) = 0;
  virtual std::optional<std::string> FindPackageVersion(const std::string& name) = 0;
  virtual void MoveKernelNic(const std::string& name, const std::string& switchName) = 0;
  /// Returns at once; the host goes down later.
  virtual void GoDown(PowerChange how) = 0;
};

}  // namespace HostSeam
