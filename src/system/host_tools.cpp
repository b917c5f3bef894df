// SPDX-License-Identifier: MIT
#include "system/host_tools.h"

#include <cstring>

#include "core/log.h"
#include "core/session.h"

namespace Kiva {

namespace {

constexpr std::size_t kRetryCapacity = 256;
constexpr int kQuerySeconds = 120;
constexpr int kCannotActAsUser = 255;

bool changeStandardSwitch(std::vector<std::string> words, std::string* trouble) {
  words.insert(words.begin(), {"halocli", "network", "vswitch", "standard"});
  return RunHalocliCommand(words, trouble) == 0;
}

}  // namespace

std::string commandLine(const std::vector<std::string>& arguments) {
  std::string line;
  for (const std::string& argument : arguments) line += (line.empty() ? "" : " ") + argument;
  return line;
}

int RunShellCommand(const std::string& line) {
  return RunCommand({.path = "/bin/sh", .arguments = {"sh", "-c", line}}).status;
}

CommandResult RunHmxCmd(const HmxRequest& request) {
  Command command{.path = kHmxCmdPath,
                  .arguments = {"hmx-cmd", "-U", session().user},
                  .input = request.input,
                  .outputCapacity = request.outputCapacity,
                  .errorCapacity = request.errorCapacity};
  command.arguments.insert(command.arguments.end(), request.words.begin(), request.words.end());
  CommandResult result = RunCommand(command);
  if (result.status != kCannotActAsUser) return result;

  logInfo("Unable to execute command hmx-cmd %s using user %s. Using user %s",
          request.words.front().c_str(), session().user.c_str(), kServiceUser);
  command.arguments[2] = kServiceUser;
  if (command.outputCapacity > 0) command.outputCapacity = kRetryCapacity;
  if (command.errorCapacity > 0) command.errorCapacity = kRetryCapacity;
  return RunCommand(command);
}

bool HmxCmdGetBool(const std::string& name) {
  logInfo("hmx-cmd invocation: get %s", name.c_str());
  const CommandResult result = RunCommand({.path = kHmxCmdPath,
                                           .arguments = {"hmx-cmd", "-U", kServiceUser, name},
                                           .outputCapacity = kTextCapacity,
                                           .timeOutSeconds = kQuerySeconds});
  if (result.status != 0) {
    char text[128];
    logError("hmx-cmd invocation failure: %s", strerror_r(result.startError, text, sizeof text));
    return false;
  }
  return result.output.starts_with("true");
}

void HmxCmdRefresh() {
  RunHmxCmd({.words = {"internalsvc/refresh"}});
}

int RunHalocliCommand(const std::vector<std::string>& arguments, std::string* trouble) {
  const CommandResult result =
      RunCommand({.path = "/bin/halocli", .arguments = arguments, .outputCapacity = kTextCapacity});
  const std::string line = commandLine(arguments);
  if (result.status == 0)
    logInfo("Command \"%s\" succeeded", line.c_str());
  else
    logError("Command \"%s\" failed (rc=%d): %s", line.c_str(), result.status,
             result.output.c_str());
  if (trouble && result.status != 0) *trouble = result.output.substr(0, result.output.find('\n'));
  return result.status;
}

bool AddStandardSwitch(const std::string& switchName, std::string* trouble) {
  return changeStandardSwitch({"add", "-v", switchName}, trouble);
}

bool RemoveStandardSwitch(const std::string& switchName, std::string* trouble) {
  return changeStandardSwitch({"remove", "-v", switchName}, trouble);
}

bool AddUplinkToStandardSwitch(const std::string& switchName, const std::string& uplink,
                               std::string* trouble) {
  return changeStandardSwitch({"uplink", "add", "-u", uplink, "-v", switchName}, trouble);
}

bool RemoveUplinkFromStandardSwitch(const std::string& switchName, const std::string& uplink,
                                    std::string* trouble) {
  return changeStandardSwitch({"uplink", "remove", "-u", uplink, "-v", switchName}, trouble);
}

bool AddPortGroupToStandardSwitch(const std::string& portGroup, const std::string& switchName,
                                  std::string* trouble) {
  return changeStandardSwitch({"portgroup", "add", "-p", portGroup, "-v", switchName}, trouble);
}

bool RemovePortGroupFromStandardSwitch(const std::string& portGroup, const std::string& switchName,
                                       std::string* trouble) {
  return changeStandardSwitch({"portgroup", "remove", "-p", portGroup, "-v", switchName}, trouble);
}

bool SetVlanOfPortGroup(const std::string& portGroup, const std::string& switchName, int vlanId,
                        std::string* trouble) {
  return changeStandardSwitch(
      {"portgroup", "set", "-p", portGroup, "-v", switchName, "-i", std::to_string(vlanId)},
      trouble);
}

void PowerOffVms(VmStop how) {
  RunHmxCmd({.words = {"hostsvc/autostartmanager/autostop"}});
  Command command{.path = "/bin/powerOffVms", .arguments = {"powerOffVms"}};
  if (how == VmStop::Terminate) command.arguments.push_back("--terminate");
  RunCommand(command);
}

}  // namespace Kiva
