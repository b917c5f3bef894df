// SPDX-License-Identifier: MIT
#include "linux/network/ovs_uplinks.h"

#include <algorithm>

#include "linux/pnics.h"
#include "linux/text.h"

namespace HostLinux {

namespace {

constexpr const char* kOwnVendor = "kiva";
constexpr const char* kUses = "kiva-uplinks";
/// Tells an isolation of ours from one that somebody else wants.
constexpr const char* kIsolated = "kiva-isolated";

using Names = std::vector<std::string>;

bool shareOne(const Names& a, const Names& b) {
  return std::find_first_of(a.begin(), a.end(), b.begin(), b.end()) != a.end();
}

/// What the ports use that do not use all.
std::vector<Names> demandsOn(const OvsBridge& bridge, const OvsPort& replaced,
                             const UsedUplinks& used) {
  std::vector<Names> demands;
  if (used) demands.push_back(*used);
  for (const auto& port : bridge.ports)
    if (const auto others = usedUplinksOf(port); others && port.id != replaced.id)
      demands.push_back(*others);
  return demands;
}

bool isToBeIsolated(const Names& uplinks, const std::vector<Names>& demands) {
  return !demands.empty() && std::none_of(demands.begin(), demands.end(), [&](const Names& used) {
    return shareOne(used, uplinks);
  });
}

void isolate(const OvsPort& port, OvsChange& change) {
  change.Set("Port", port.id, {"protected=true", std::string("external_ids:") + kIsolated + "=1"});
}

void release(const OvsPort& port, OvsChange& change) {
  change.Set("Port", port.id, {"protected=false"});
  change.RemoveExternalId("Port", port.id, kIsolated);
}

}  // namespace

bool isThirdParty(const OvsBridge& bridge) {
  const auto vendor = bridge.externalIds.find("vendor");
  return vendor != bridge.externalIds.end() && vendor->second != kOwnVendor;
}

std::vector<std::string> uplinksOf(const Files& files, const OvsPort& port) {
  Names found;
  for (const auto& nic : physicalNics(files))
    for (const auto& interface : port.interfaces)
      if (interface.name == nic.kernel) found.push_back(nic.kernel);
  return found;
}

std::vector<std::string> uplinksOf(const Files& files, const OvsBridge& bridge) {
  Names found;
  for (const auto& port : bridge.ports)
    for (auto& uplink : uplinksOf(files, port)) found.push_back(std::move(uplink));
  return found;
}

UsedUplinks usedUplinksOf(const OvsPort& port) {
  const auto uses = port.externalIds.find(kUses);
  if (uses == port.externalIds.end()) return std::nullopt;
  const auto names = words(uses->second);
  return Names(names.begin(), names.end());
}

OvsChange::Settings settingsFor(const UsedUplinks& used) {
  if (!used) return {};
  std::string names;
  for (const auto& one : *used) names += (names.empty() ? "" : " ") + one;
  return {"protected=true", std::string("external_ids:") + kUses + "=" + ovsValue(names)};
}

void isolateUplinks(const Files& files, const OvsBridge& bridge, const OvsPort& replaced,
                    const UsedUplinks& used, OvsChange& change, OvsChange& back) {
  const auto demands = demandsOn(bridge, replaced, used);
  for (const auto& port : bridge.ports) {
    const Names uplinks = uplinksOf(files, port);
    if (uplinks.empty()) continue;
    const bool ours = port.externalIds.count(kIsolated) != 0;
    const bool wanted = isToBeIsolated(uplinks, demands);
    if (wanted && !port.isolated) {
      isolate(port, change);
      release(port, back);
    } else if (!wanted && ours) {
      release(port, change);
      isolate(port, back);
    }
  }
}

}  // namespace HostLinux
