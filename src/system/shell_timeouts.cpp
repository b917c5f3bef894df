// SPDX-License-Identifier: MIT
#include "system/shell_timeouts.h"

#include <string>

#include "core/log.h"
#include "system/run_command.h"
#include "system/shell_services.h"
#include "system/timeout_value.h"

namespace Kiva {

namespace {

constexpr std::size_t kAnswerCapacity = 256;

int setOption(const std::string& tool, const ShellTimeout& timeout, std::int64_t seconds) {
  return RunCommand({.path = "/sbin/" + tool,
                     .arguments = {tool, "system", "settings", "advanced", "set", "-o",
                                   timeout.option, "-i", std::to_string(seconds)}})
      .status;
}

}  // namespace

std::int64_t readShellTimeout(const ShellTimeout& timeout) {
  const CommandResult answer =
      RunCommand({.path = "/sbin/halocfg-advcfg",
                  .arguments = {"halocfg-advcfg", "-q", "-g", timeout.option},
                  .outputCapacity = kAnswerCapacity});
  return answer.status == 0 ? parseNumber(answer.output) / kSecondsPerMinute : 0;
}

void storeShellTimeout(const ShellTimeout& timeout, std::int64_t minutes) {
  const std::int64_t seconds = minutes * kSecondsPerMinute;
  if (setOption("halocli", timeout, seconds) != 0) setOption("localcli", timeout, seconds);
  if (timeout.takenUp == TakenUp::ByRestart) restartRunningServices();
  logTimeout(timeout.name, minutes);
}

void logTimeout(const char* name, std::int64_t minutes) {
  if (minutes == 0)
    logInfo("Disabled %s", name);
  else
    logInfo("Modified %s to %d minutes", name, static_cast<int>(minutes));
}

}  // namespace Kiva
