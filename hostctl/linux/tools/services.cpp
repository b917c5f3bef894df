// SPDX-License-Identifier: MIT
#include "linux/tools/services.h"

#include <algorithm>
#include <array>
#include <span>

#include "hostctl/lib/exception.h"
#include "linux/text.h"
#include "linux/tools/units.h"

namespace HostLinux {

using namespace HostSeam;
using HostCtl::Lib::HostCtlException;

namespace {

/// A service and the units that can each be it, the usual one first.
struct Service {
  std::string_view name;
  std::array<const char*, 2> units;
};

constexpr std::array<Service, 3> kServices = {{
    {"HaloShell", {"halo-shell.service"}},
    {"SSH", {"ssh.service", "ssh.socket"}},
    {"ovl-opsagent", {"ovl-opsagent.service"}},
}};

constexpr const char* kAgentsFile = "/etc/corvo/agents";
constexpr const char* kUsualAgents = "libvirtd.service\nvirtqemud.service\ncockpit.socket\n";

/// The installed units of a service.
std::vector<Unit> unitsOf(const std::string& operation, const std::string& name) {
  const auto* service = std::find_if(kServices.begin(), kServices.end(),
                                     [&](const Service& one) { return one.name == name; });
  if (service == kServices.end())
    throw HostCtlException(operation, name, "there is no such service");
  std::vector<Unit> units;
  for (const char* unit : service->units)
    if (unit != nullptr) units.push_back(readUnit(operation, unit));
  std::erase_if(units, [](const Unit& unit) { return !unit.installed; });
  return units;
}

std::vector<Unit> installedUnitsOf(const std::string& operation, const std::string& name) {
  auto units = unitsOf(operation, name);
  if (units.empty()) throw HostCtlException(operation, name, "is not installed");
  return units;
}

/// Whether one of `units` has what `property` points to.
const Unit* findWith(std::span<const Unit> units, bool Unit::*property) {
  const auto unit =
      std::find_if(units.begin(), units.end(), [&](const Unit& one) { return one.*property; });
  return unit == units.end() ? nullptr : &*unit;
}

void change(const std::string& operation, const std::string& object, const std::string& verb,
            const std::vector<std::string>& units) {
  if (units.empty()) return;
  if (verb == "start") forgetFailures(units);
  std::vector<std::string> arguments = {verb, "--"};
  arguments.insert(arguments.end(), units.begin(), units.end());
  systemctl(operation, object, arguments);
}

std::vector<std::string> namesOf(std::span<const Unit> units) {
  std::vector<std::string> names;
  for (const Unit& unit : units) names.push_back(unit.name);
  return names;
}

std::vector<Unit> installedAgents(const std::string& operation, const Files& files) {
  std::vector<Unit> units;
  for (const std::string& name : parseAgents(files.Read(kAgentsFile).value_or(kUsualAgents)))
    if (Unit unit = readUnit(operation, name); unit.installed) units.push_back(std::move(unit));
  return units;
}

}  // namespace

ServiceState readServiceState(const std::string& name) {
  const auto units = unitsOf("GetServiceState", name);
  if (units.empty()) return ServiceState::Absent;
  return findWith(units, &Unit::active) ? ServiceState::Running : ServiceState::Stopped;
}

void setServiceRunning(const std::string& name, bool running) {
  const char* operation = running ? "StartService" : "StopService";
  const auto units = installedUnitsOf(operation, name);
  if (!running) return change(operation, name, "stop", namesOf(units));
  const Unit* chosen = findWith(units, &Unit::enabled);
  change(operation, name, "start", {(chosen != nullptr ? *chosen : units.front()).name});
}

void setServiceEnabled(const std::string& name, bool enabled) {
  const char* operation = enabled ? "EnableService" : "DisableService";
  const auto units = installedUnitsOf(operation, name);
  if (!enabled) return change(operation, name, "disable", namesOf(units));
  if (findWith(units, &Unit::enabled) == nullptr)
    change(operation, name, "enable", {units.front().name});
}

std::vector<Agent> readAgents(const Files& files) {
  std::vector<Agent> agents;
  for (const Unit& unit : installedAgents("ReadAgents", files))
    agents.push_back({unit.name, unit.active});
  return agents;
}

void setAgentsRunning(const Files& files, bool running) {
  const char* operation = running ? "StartAgents" : "StopAgents";
  const auto names = namesOf(installedAgents(operation, files));
  change(operation, "the management agents", running ? "start" : "stop", names);
}

std::vector<std::string> parseAgents(std::string_view text) {
  std::vector<std::string> names;
  for (std::string_view line : lines(text)) {
    line = trim(line.substr(0, line.find('#')));
    if (!isUnitName(line)) continue;
    const bool hasKind = line.find('.') != std::string_view::npos;
    names.push_back(std::string(line) + (hasKind ? "" : ".service"));
  }
  return names;
}

}  // namespace HostLinux
