// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "hostseam/tool_host.h"
#include "hosttools/usage.h"

namespace HostTools {

using HostSeam::kNoSuchTool;
using HostSeam::StandInHost;
using HostSeam::ToolAnswer;
using HostSeam::ToolHost;

/// One call of a command: the name that the tool was called by, without its folder, and the values
/// of its arguments.
struct Call {
  std::string name;
  Values values;

  const std::string& operator[](const char* argument) const { return values.at(argument); }
  bool Has(const char* argument) const { return values.count(argument) != 0; }
};

/// What a command does to the host; changes are for those who may make them.
enum class Effect { Reads, Changes };

/// One thing that a tool does: how it is called (as chooseUsage reads it), a line of help, and what
/// it does. A failure is thrown, or answered with a status of its own.
template <typename Host>
struct Command {
  std::string_view usage;
  std::string_view help;
  Effect effect;
  ToolAnswer (*run)(Host& host, const Call& call);
};

template <typename Host>
using Commands = std::span<const Command<Host>>;

/// Runs the command whose usage `arguments` follow. Throws UsageError where there is none.
template <typename Host>
ToolAnswer runCommand(Host& host, Commands<Host> commands, const std::string& name,
                      Arguments arguments) {
  std::vector<std::string_view> usages;
  for (const auto& command : commands) usages.push_back(command.usage);
  Choice choice = chooseUsage(usages, arguments);
  const Command<Host>& chosen = commands[choice.index];
  if (chosen.effect == Effect::Changes && !host.MayChange())
    throw std::runtime_error("only root may change this host");
  return chosen.run(host, {name, std::move(choice.values)});
}

/// One of the host's command-line tools: the paths at which it is called, separated by blanks, what
/// it is for, how many seconds it may take at most, and its commands. `run` is for a tool that has
/// something to say before its commands.
template <typename Host>
struct Tool {
  std::string_view paths;
  std::string_view about;
  int seconds;
  Commands<Host> commands;
  ToolAnswer (*run)(Host& host, Commands<Host> commands, const std::string& name,
                    Arguments arguments) = runCommand<Host>;
};

/// The name of the file at `path`.
std::string lastComponent(std::string_view path);

/// What is the same for every kind of tool; `help` is what --help prints.
struct ToolDescription {
  std::vector<std::string> paths;
  int seconds = 0;
  std::string help;
};

/// The tools that a host of this kind has.
std::vector<ToolDescription> toolsOf(const ToolHost& host);
std::vector<ToolDescription> toolsOf(const StandInHost& host);

/// Runs the tool at `path` with its whole argument vector, its name first. A path without a tool
/// answers 127, as a shell does; a wrong call, and a change that the host refuses, answer 1 with
/// one line that says why.
ToolAnswer runTool(ToolHost& host, const std::string& path, const std::vector<std::string>& vector);
ToolAnswer runTool(StandInHost& host, const std::string& path,
                   const std::vector<std::string>& vector);

}  // namespace HostTools
