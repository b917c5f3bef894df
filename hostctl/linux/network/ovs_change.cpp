// SPDX-License-Identifier: MIT
#include "linux/network/ovs_change.h"

#include <syslog.h>

#include <chrono>
#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"
#include "linux/run_program.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

constexpr const char* kDatabaseTool = "/usr/bin/ovs-vsctl";
constexpr const char* kFlowTool = "/usr/bin/ovs-ofctl";
constexpr const char* kEveryVersion =
    "--protocols=OpenFlow10,OpenFlow11,OpenFlow12,OpenFlow13,OpenFlow14,OpenFlow15";
/// Whoever waits for one of the tools says so; the tool's own limit is for when he is gone.
constexpr std::chrono::seconds kLimit{5};
constexpr const char* kToolLimit = "--timeout=7";
constexpr std::size_t kMostOutput = 1 << 20;

std::string run(const ChangeContext& context, const char* path,
                const std::vector<std::string>& words) {
  const std::string name = std::string(path).substr(std::string_view(path).rfind('/') + 1);
  std::vector<std::string> arguments{name, kToolLimit};
  arguments.insert(arguments.end(), words.begin(), words.end());
  ProgramResult result = runProgram({path, arguments}, kLimit, kMostOutput);
  if (result.status == 0) return std::move(result.output);
  throw HostCtlException(
      context.operation, context.object,
      result.status < 0 ? "Open vSwitch: " + result.output : "Open vSwitch: " + causeOf(result));
}

std::vector<std::string> flowWords(std::vector<std::string> words) {
  words.insert(words.begin(), kEveryVersion);
  return words;
}

}  // namespace

std::string ovsValue(const std::string& text) {
  return nlohmann::json(text).dump();
}

void OvsChange::Add(Settings words) {
  words_.push_back("--");
  words_.insert(words_.end(), words.begin(), words.end());
}

void OvsChange::AddPort(const OvsBridge& bridge, const std::string& name, const Settings& settings,
                        const OvsInterface& interface) {
  Settings words{"--id=@port", "create", "Port", "name=" + ovsValue(name),
                 "interfaces=" + interface.id};
  words.insert(words.end(), settings.begin(), settings.end());
  Add(std::move(words));
  Add({"add", "Bridge", bridge.id, "ports", "@port"});
}

void OvsChange::Create(const std::string& interface, const Settings& settings) {
  Settings words{"--id=@interface", "create", "Interface", "name=" + ovsValue(interface)};
  words.insert(words.end(), settings.begin(), settings.end());
  Add(std::move(words));
}

void OvsChange::AddPortWithNew(const OvsBridge& bridge, const std::string& name,
                               const Settings& settings, const std::string& interface,
                               const Settings& interfaceSettings) {
  Create(interface, interfaceSettings);
  AddPort(bridge, name, settings, {"@interface", interface, {}, {}});
}

void OvsChange::AddInterface(const OvsPort& port, const std::string& interface,
                             const Settings& settings) {
  Create(interface, settings);
  Add({"add", "Port", port.id, "interfaces", "@interface"});
}

void OvsChange::RemovePort(const OvsBridge& bridge, const OvsPort& port) {
  Add({"remove", "Bridge", bridge.id, "ports", port.id});
}

void OvsChange::RemoveInterface(const OvsPort& port, const OvsInterface& interface) {
  Add({"remove", "Port", port.id, "interfaces", interface.id});
}

void OvsChange::Set(const char* table, const std::string& id, const Settings& settings) {
  Settings words{"set", table, id};
  words.insert(words.end(), settings.begin(), settings.end());
  Add(std::move(words));
}

void OvsChange::RemoveExternalId(const char* table, const std::string& id, const std::string& key) {
  Add({"remove", table, id, "external_ids", key});
}

void OvsChange::Clear(const char* table, const std::string& id, const std::string& column) {
  Add({"clear", table, id, column});
}

void OvsChange::Commit(const ChangeContext& context) const {
  if (!words_.empty()) run(context, kDatabaseTool, words_);
}

bool OvsChange::CommitAnyway(const ChangeContext& context) const noexcept try {
  Commit(context);
  return true;
} catch (const std::exception& error) {
  syslog(LOG_USER | LOG_ERR, "Open vSwitch's ports could not be put back: %s", error.what());
  return false;
}

std::set<std::string> blockedInterfacesIn(const std::string& portDescriptions) {
  std::set<std::string> blocked;
  std::string interface;
  for (const std::string_view line : lines(portDescriptions)) {
    const auto open = line.find('('), close = line.find("): addr:");
    if (open != line.npos && close != line.npos && open < close)
      interface = line.substr(open + 1, close - open - 1);
    const auto said = words(line);
    if (said.empty() || said[0] != "config:") continue;
    for (const auto& flag : said)
      if (flag == "NO_RECV" || flag == "NO_FWD") blocked.insert(interface);
  }
  return blocked;
}

std::set<std::string> blockedInterfaces(const ChangeContext& context, const std::string& bridge) {
  return blockedInterfacesIn(run(context, kFlowTool, flowWords({"dump-ports-desc", bridge})));
}

void setBlocking(const ChangeContext& context, const std::string& bridge,
                 const std::string& interface, Blocking blocking) {
  const std::string no = blocking == Blocking::On ? "no-" : "";
  for (const char* flag : {"receive", "forward"})
    run(context, kFlowTool, flowWords({"mod-port", bridge, interface, no + flag}));
}

}  // namespace HostLinux
