// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "system/run_command.h"

namespace Kiva {

/// The user that hmx-cmd acts as where nobody is logged in, or where it refuses the one who is.
inline constexpr const char* kServiceUser = "kiva";
inline constexpr const char* kHmxCmdPath = "/bin/hmx-cmd";

/// The argument vector as the log shows it, joined by single blanks.
std::string commandLine(const std::vector<std::string>& arguments);

/// How much of a tool's output is kept for a log line or an answer.
inline constexpr std::size_t kTextCapacity = 255;

/// The status of a command that could not be started or did not end by itself.
inline constexpr int kNotRun = -1;

/// Runs one line of shell. 127 for a command that the shell does not find; kNotRun only when the
/// shell itself could not be started or did not end by itself.
int RunShellCommand(const std::string& line);

/// A request to the management agent: the command and its further arguments.
struct HmxRequest {
  std::vector<std::string> words;
  std::string_view input = {};
  std::size_t outputCapacity = 0;
  std::size_t errorCapacity = 0;
};

/// Runs the request as the logged-in user and, when the agent's tool cannot act as that user (255),
/// once more as the service user.
CommandResult RunHmxCmd(const HmxRequest& request);

/// Asks the management agent a yes/no question as the service user; false when it does not answer.
bool HmxCmdGetBool(const std::string& name);

/// Makes the management agent read the host anew, after a change that did not go through it.
void HmxCmdRefresh();

/// Runs halocli with a vector that begins "halocli", and logs how it ended. `trouble` becomes the
/// first line of what a failed one says.
int RunHalocliCommand(const std::vector<std::string>& arguments, std::string* trouble = nullptr);

/// Changes of standard switches; true on success, else `trouble` as above.
bool AddStandardSwitch(const std::string& switchName, std::string* trouble = nullptr);
bool RemoveStandardSwitch(const std::string& switchName, std::string* trouble = nullptr);
bool AddUplinkToStandardSwitch(const std::string& switchName, const std::string& uplink,
                               std::string* trouble = nullptr);
bool RemoveUplinkFromStandardSwitch(const std::string& switchName, const std::string& uplink,
                                    std::string* trouble = nullptr);
bool AddPortGroupToStandardSwitch(const std::string& portGroup, const std::string& switchName,
                                  std::string* trouble = nullptr);
bool RemovePortGroupFromStandardSwitch(const std::string& portGroup, const std::string& switchName,
                                       std::string* trouble = nullptr);
/// 0 for none, 4095 for all.
bool SetVlanOfPortGroup(const std::string& portGroup, const std::string& switchName, int vlanId,
                        std::string* trouble = nullptr);

enum class VmStop { Graceful, Terminate };

/// Stops the virtual machines before the host goes down: first in their configured order, then all.
void PowerOffVms(VmStop how);

}  // namespace Kiva
