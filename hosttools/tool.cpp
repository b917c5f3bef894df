// SPDX-License-Identifier: MIT
#include "hosttools/tool.h"

#include <algorithm>
#include <array>
#include <exception>
#include <iterator>
#include <optional>
#include <sstream>

#include "hosttools/tools.h"

namespace HostTools {

namespace {

template <typename Host>
using Table = std::span<const Tool<Host>* const>;

constexpr std::array kTools = {&kHmxCmd,         &kHalocli,      &kHalocfgAdvcfg,  &kInitScripts,
                               &kServicesScript, &kBackupScript, &kFirmwareConfig, &kPowerOffVms,
                               &kTarnbacktrace,  &kTarnping};
constexpr std::array kStandIns = {&kOpenssl,  &kSshKeygen, &kOvlcfgVswitch,
                                  &kPoweroff, &kReboot,    &kShell};

template <typename Host>
std::vector<std::string> pathsOf(const Tool<Host>& tool) {
  std::istringstream in{std::string(tool.paths)};
  return {std::istream_iterator<std::string>(in), {}};
}

template <typename Host>
std::string helpOf(const Tool<Host>& tool, const std::string& name) {
  std::string help(tool.about);
  for (const Command<Host>& command : tool.commands)
    help.append("\n  ")
        .append(name)
        .append(" ")
        .append(command.usage)
        .append("\n      ")
        .append(command.help);
  return help + "\n";
}

template <typename Host>
const Tool<Host>* findTool(Table<Host> table, const std::string& path) {
  const auto found = std::find_if(table.begin(), table.end(), [&](const auto* tool) {
    const auto paths = pathsOf(*tool);
    return std::find(paths.begin(), paths.end(), path) != paths.end();
  });
  return found == table.end() ? nullptr : *found;
}

template <typename Host>
ToolAnswer runFound(Host& host, const Tool<Host>& tool, const std::string& name,
                    Arguments arguments) try {
  if (arguments.size() == 1 && arguments.front() == "--help") return {0, helpOf(tool, name), ""};
  return tool.run(host, tool.commands, name, arguments);
} catch (const std::exception& error) {
  return {1, "", name + ": " + error.what() + "\n"};
}

/// The nearest one: of the whole call, else of its first words, down to the path alone.
std::optional<ToolAnswer> findRehearsal(ToolHost& host, const std::string& path,
                                        std::vector<std::string> words) {
  for (; words.size() > 1; words.pop_back()) {
    std::string call = path;
    for (const std::string& word : Arguments(words).subspan(1)) call += " " + word;
    if (auto rehearsed = host.FindRehearsal(call)) return rehearsed;
  }
  return host.FindRehearsal(path);
}

template <typename Host>
ToolAnswer runFrom(Host& host, const Tool<Host>* tool, const std::string& path,
                   const std::vector<std::string>& vector) {
  if (auto rehearsed = findRehearsal(host, path, vector)) return *rehearsed;
  if (tool == nullptr) return {kNoSuchTool, "", path + ": no such tool\n"};
  return runFound(host, *tool, lastComponent(path),
                  Arguments(vector).subspan(vector.empty() ? 0 : 1));
}

template <typename Host>
void describe(Table<Host> table, std::vector<ToolDescription>& tools) {
  for (const Tool<Host>* tool : table) {
    const auto paths = pathsOf(*tool);
    tools.push_back({paths, tool->seconds, helpOf(*tool, lastComponent(paths.front()))});
  }
}

}  // namespace

std::string lastComponent(std::string_view path) {
  return std::string(path.substr(path.rfind('/') + 1));
}

std::vector<ToolDescription> toolsOf(const ToolHost&) {
  std::vector<ToolDescription> tools;
  describe<ToolHost>(kTools, tools);
  return tools;
}

std::vector<ToolDescription> toolsOf(const StandInHost& host) {
  std::vector<ToolDescription> tools = toolsOf(static_cast<const ToolHost&>(host));
  describe<StandInHost>(kStandIns, tools);
  return tools;
}

ToolAnswer runTool(ToolHost& host, const std::string& path,
                   const std::vector<std::string>& vector) {
  return runFrom(host, findTool<ToolHost>(kTools, path), path, vector);
}

ToolAnswer runTool(StandInHost& host, const std::string& path,
                   const std::vector<std::string>& vector) {
  if (const auto* tool = findTool<StandInHost>(kStandIns, path))
    return runFrom(host, tool, path, vector);
  return runTool(static_cast<ToolHost&>(host), path, vector);
}

}  // namespace HostTools
