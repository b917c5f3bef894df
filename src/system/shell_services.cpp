// SPDX-License-Identifier: MIT
#include "system/shell_services.h"

#include <string>

#include "core/log.h"
#include "core/session.h"
#include "hostctl/lib/exception.h"
#include "system/host_tools.h"
#include "tarnctl/system/system_info_impl.h"

namespace Kiva {

namespace {

/// The words of both directions.
struct Words {
  const char *start, *enable, *enabled;
};

Words wordsFor(ServiceSwitch direction) {
  return direction == ServiceSwitch::On ? Words{"start", "enable", "enabled"}
                                        : Words{"stop", "disable", "disabled"};
}

int runInitScript(const ShellService& service, const char* verb) {
  return RunCommand({.path = "/bin/sh", .arguments = {"sh", service.initScript, verb}}).status;
}

bool requestAgent(const ShellService& service, const char* verb) {
  return RunHmxCmd({.words = {std::string("hostsvc/") + verb + "_" + service.request}}).status == 0;
}

void switchFirewall(const char* ruleset, ServiceSwitch direction) {
  try {
    TarnCtl::System::SystemInfoImpl().SetFirewallRuleset(ruleset, direction == ServiceSwitch::On);
  } catch (const HostCtl::Lib::HostCtlException& exception) {
    logError("Failed to update firewall %s ruleset status: %s", ruleset, exception.what());
  }
}

// The agent that did not answer has not switched the firewall either.
void switchWithoutAgent(const ShellService& service, ServiceSwitch direction) {
  logWarning("Unable to run hmx-cmd to start/stop %s", service.warned);
  runInitScript(service, wordsFor(direction).start);
  if (service.ruleset) switchFirewall(service.ruleset, direction);
}

}  // namespace

bool isRunning(const ShellService& service) {
  return runInitScript(service, "status") == 0;
}

void switchService(const ShellService& service, ServiceSwitch direction) {
  const Words words = wordsFor(direction);
  if (!requestAgent(service, words.start)) switchWithoutAgent(service, direction);
  if (!requestAgent(service, words.enable))
    logWarning("Unable to run hmx-cmd to enable/disable %s", service.warned);
  logInfo("User %s %s %s", session().user.c_str(), words.enabled, service.name);
}

void restartRunningServices() {
  for (const ShellService& service : {kHaloShellService, kSshService})
    if (isRunning(service)) runInitScript(service, "restart");
}

}  // namespace Kiva
