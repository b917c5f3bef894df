// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <exception>

#include "hosttools/options.h"
#include "hosttools/tool.h"

namespace HostTools {

namespace {

using HostSeam::UplinkChange;
using Values = std::map<std::string, std::string>;

/// A command: its words, the options that must all be there, and what it does with their values.
struct Command {
  std::vector<std::string> words;
  std::vector<const char*> options;
  void (*run)(ToolHost& host, const Values& values);
};

const std::vector<Command>& commands() {
  static const std::vector<Command> table = {
      {{"network", "vswitch", "standard", "add"},
       {"-v"},
       [](ToolHost& host, const Values& values) { host.AddStandardSwitch(values.at("-v")); }},
      {{"network", "vswitch", "standard", "uplink", "add"},
       {"-u", "-v"},
       [](ToolHost& host, const Values& values) {
         host.ChangeUplink(UplinkChange::Add, values.at("-u"), values.at("-v"));
       }},
      {{"network", "vswitch", "standard", "uplink", "remove"},
       {"-u", "-v"},
       [](ToolHost& host, const Values& values) {
         host.ChangeUplink(UplinkChange::Remove, values.at("-u"), values.at("-v"));
       }},
      {{"network", "vswitch", "standard", "portgroup", "add"},
       {"-p", "-v"},
       [](ToolHost& host, const Values& values) {
         host.AddPortGroup(values.at("-p"), values.at("-v"));
       }},
  };
  return table;
}

bool isCalled(const Command& command, Arguments arguments) {
  return command.words.size() <= arguments.size() &&
         std::equal(command.words.begin(), command.words.end(), arguments.begin());
}

void runCommand(ToolHost& host, Arguments arguments) {
  const auto found =
      std::find_if(commands().begin(), commands().end(),
                   [&](const Command& command) { return isCalled(command, arguments); });
  if (found == commands().end()) throw UsageError("unknown command");
  found->run(host, readOptions(arguments.subspan(found->words.size()), found->options));
}

}  // namespace

/// Callers show what comes on standard output, so that is where a failure is told.
ToolAnswer halocli(ToolHost& host, Arguments arguments) try {
  runCommand(host, arguments);
  return {};
} catch (const std::exception& error) {
  return {1, "halocli: " + std::string(error.what()) + "\n", ""};
}

}  // namespace HostTools
