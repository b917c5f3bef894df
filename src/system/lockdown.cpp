// SPDX-License-Identifier: MIT
#include "system/lockdown.h"

#include "core/log.h"
#include "system/host_tools.h"

namespace Kiva {

bool isLockdownEnabled() {
  return HmxCmdGetBool("hmxsvc/auth/lockdown_is_enabled");
}

bool isLockdownPossible() {
  return HmxCmdGetBool("hmxsvc/auth/lockdown_is_possible");
}

bool switchLockdown(Lockdown wanted) {
  const bool on = wanted == Lockdown::On;
  const CommandResult result = RunCommand(
      {.path = kHmxCmdPath,
       .arguments = {"hmx-cmd", "-U", kServiceUser,
                     on ? "hmxsvc/auth/lockdown_mode_enter" : "hmxsvc/auth/lockdown_mode_exit"},
       .outputCapacity = kTextCapacity,
       .errorCapacity = kTextCapacity});
  if (result.status == 0)
    logInfo("Lockdown mode %s", on ? "enabled" : "disabled");
  else
    logError("%s lockdown mode failed with error: %s", on ? "Enabling" : "Disabling",
             result.errors.c_str());
  return result.status == 0;
}

}  // namespace Kiva
