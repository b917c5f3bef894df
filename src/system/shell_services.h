// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// A service that lets operators at the host's shell. Start and stop go through the management
/// agent, and where that cannot, through the service's init script.
struct ShellService {
  /// As the agent, the log's warnings and the log's information name it.
  const char* request;
  const char* warned;
  const char* name;
  const char* initScript;
  /// The firewall's set of rules that the agent opens and closes with the service; null: none.
  const char* ruleset;
};

inline constexpr ShellService kHaloShellService{.request = "halo_shell",
                                                .warned = "Halo Shell",
                                                .name = "Halo Shell",
                                                .initScript = "/etc/init.d/HaloShell",
                                                .ruleset = nullptr};
inline constexpr ShellService kSshService{.request = "ssh",
                                          .warned = "ssh",
                                          .name = "SSH",
                                          .initScript = "/etc/init.d/SSH",
                                          .ruleset = "sshServer"};

/// Asks the init script.
bool isRunning(const ShellService& service);

enum class ServiceSwitch { On, Off };

/// Starts or stops the service, then has it start with the host or not. What fails is in the log.
void switchService(const ShellService& service, ServiceSwitch direction);

/// Lets each of the services that runs take new settings up.
void restartRunningServices();

}  // namespace Kiva
