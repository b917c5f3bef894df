// SPDX-License-Identifier: MIT
#include "system/ovl_opsagent.h"

#include "core/log.h"
#include "system/host_tools.h"

namespace Kiva {

namespace {

constexpr const char* kStop = "/etc/init.d/ovl-opsagent stop";
constexpr const char* kStart = "/etc/init.d/ovl-opsagent start";
constexpr const char* kStatus = "/etc/init.d/ovl-opsagent status";
constexpr const char* kVersionAtLeast3 =
    "let v=`halocli --formatter=keyvalue software pak get -n ovl-opsagent"
    " | awk '/Version/{ split($0, kv, \"=\"); split(kv[2], ver, \".\"); print ver[1] }'`;"
    " (exit $((v < 3)))";
constexpr const char* kMigrateTool = "/usr/lib64/corvo/ovl-opsagent/bin/ovlcfg-vswitch";

bool runLogged(const char* line) {
  logInfo("Running: %s", line);
  return RunShellCommand(line) == 0;
}

}  // namespace

int RunOvlCommand(const std::string& path, const std::vector<std::string>& arguments) {
  const CommandResult result = RunCommand({.path = path,
                                           .arguments = arguments,
                                           .outputCapacity = kTextCapacity,
                                           .errorCapacity = kTextCapacity});
  const std::string line = commandLine(arguments);
  if (result.status == 0)
    logInfo("Command \"%s\" succeeded", line.c_str());
  else
    logError("Command \"%s\" failed (rc=%d): (stdout=%s, stderr=%s)", line.c_str(), result.status,
             result.output.c_str(), result.errors.c_str());
  return result.status;
}

bool StopOvlOpsAgent() {
  logInfo("Stopping ovl-opsagent.");
  const bool stopped = RunShellCommand(kStop) == 0;
  if (stopped)
    logInfo("ovl-opsagent has been successfully stopped.");
  else
    logError("Failed to stop ovl-opsagent.");
  return stopped;
}

void StartOvlOpsAgent(bool wasStopped) {
  if (!wasStopped) return logInfo("Skipping ovl-opsagent start.");
  logInfo("Starting ovl-opsagent.");
  if (RunShellCommand(kStart) == 0)
    logInfo("ovl-opsagent has been successfully started.");
  else
    logError("Failed to start ovl-opsagent.");
}

bool IsOvlOpsAgentPresent() {
  const bool present = runLogged(kStatus);
  logInfo("ovl-opsagent is %spresent on the system.", present ? "" : "not ");
  return present;
}

bool IsOvlOpsAgentVersion3OrLater() {
  const bool late = runLogged(kVersionAtLeast3);
  if (late) logInfo("ovl-opsagent version >= 3 detected");
  return late;
}

bool IsOvlOpsAgentUsable() {
  return IsOvlOpsAgentPresent() && IsOvlOpsAgentVersion3OrLater();
}

bool MigrateWithOvlCfgVswitch(const std::string& interfaceName, const std::string& switchName) {
  return RunOvlCommand(kMigrateTool, {kMigrateTool, "-m", "-p", interfaceName, "-I", switchName}) ==
         0;
}

}  // namespace Kiva
