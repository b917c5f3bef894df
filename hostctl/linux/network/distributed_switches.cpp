// SPDX-License-Identifier: MIT
#include "linux/network/distributed_switches.h"

#include <syslog.h>

#include <algorithm>
#include <exception>
#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"
#include "linux/network/ovs_uplinks.h"
#include "linux/network/ovsdb.h"
#include "linux/network/own_files.h"
#include "linux/network/raised_links.h"
#include "linux/network/switch_files.h"
#include "linux/pnics.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::DistributedPort;
using HostSeam::DistributedSwitchRecord;
using nlohmann::json;

namespace {

constexpr const char* kRead = "GetDistributedSwitches";
/// A bridge remembers how it had an uplink that is taken from it.
const std::string kHad = "kiva-had-";

using Names = std::vector<std::string>;

Names pnicNames(const Files& files, const Names& kernelNames) {
  Names found;
  for (const auto& nic : physicalNics(files))
    if (std::find(kernelNames.begin(), kernelNames.end(), nic.kernel) != kernelNames.end())
      found.push_back(nic.pnic);
  return found;
}

/// Whoever only looks at a switch can do so while Open vSwitch does not work.
std::set<std::string> blockedOr(const std::string& bridge) try {
  return blockedInterfaces({kRead, bridge}, bridge);
} catch (const HostCtlException& error) {
  syslog(LOG_USER | LOG_ERR, "%s", error.what());
  return {};
}

DistributedPort portRecord(const Files& files, const OvsPort& port,
                           const std::set<std::string>& blocked) {
  DistributedPort record;
  record.name = port.name;
  record.vlanId = static_cast<std::int16_t>(port.tag);
  for (const auto& interface : port.interfaces) {
    record.blocked = record.blocked || blocked.count(interface.name) != 0;
    if (files.Exists("/sys/class/net/" + interface.name)) record.nic = interface.name;
  }
  if (const auto used = usedUplinksOf(port)) record.uplinks = pnicNames(files, *used);
  return record;
}

DistributedSwitchRecord switchRecord(const Files& files, const OvsBridge& bridge) {
  DistributedSwitchRecord record{bridge.name, isThirdParty(bridge), {}, {}};
  record.uplinks = pnicNames(files, uplinksOf(files, bridge));
  const auto blocked = blockedOr(bridge.name);
  for (const auto& port : bridge.ports)
    if (uplinksOf(files, port).empty()) record.ports.push_back(portRecord(files, port, blocked));
  return record;
}

/// How a bridge had an uplink: a port of its name unless it says otherwise.
struct FormerUplink {
  std::string port;
  OvsChange::Settings settings;
  OvsChange::Settings interfaceSettings;
};

std::string noteOf(const OvsPlace& place) {
  const json note{{"port", place.port->name},
                  {"settings", place.port->settings},
                  {"interface", place.interface->settings}};
  return ovsValue(note.dump());
}

FormerUplink formerIn(const OvsBridge& bridge, const std::string& nic) try {
  const json note = json::parse(bridge.externalIds.at(kHad + nic));
  return {note.at("port"), note.at("settings"), note.at("interface")};
} catch (const std::exception&) {
  return {nic, {}, {}};
}

const OvsBridge& bridgeNamed(const OvsBridges& bridges, const ChangeContext& context,
                             const std::string& name) {
  for (const auto& bridge : bridges)
    if (bridge.name == name && bridge.controlled) return bridge;
  throw HostCtlException(context.operation, context.object,
                         "there is no distributed switch " + name);
}

std::string kernelNicOf(const Files& files, const ChangeContext& context) {
  const auto nic = kernelNamed(physicalNics(files), context.object);
  if (nic.empty())
    throw HostCtlException(context.operation, context.object, "there is no such adapter");
  return nic;
}

/// One change of a switch's uplinks.
class UplinkEdit {
 public:
  UplinkEdit(const Files& files, ChangeContext context, const std::string& switchName)
      : files_(files),
        context_(std::move(context)),
        own_(files),
        lock_(own_.Lock()),
        bridges_(readOvsBridges(files, context_.operation)),
        bridge_(bridgeNamed(bridges_, context_, switchName)),
        nic_(kernelNicOf(files, context_)) {}

  void Add() {
    const OvsPlace place = findOnOvs(bridges_, nic_);
    if (place.bridge == &bridge_) return;
    DemandFree(place);
    RaisedLinks raised(context_.operation);
    raised.Raise(nic_);
    CommitOr(Addition(bridge_), [&](const OvsBridge&, const OvsPlace& now) {
      return now ? Removal(now) : OvsChange();
    });
    raised.Keep(nic_);
  }

  void Remove() {
    const OvsPlace place = findOnOvs(bridges_, nic_);
    if (place.bridge != &bridge_) return;
    OvsChange change = Removal(place);
    change.Set("Bridge", bridge_.id, {"external_ids:" + kHad + nic_ + "=" + noteOf(place)});
    CommitOr(change, [&](const OvsBridge& bridge, const OvsPlace& now) {
      return now ? OvsChange() : Addition(bridge);
    });
  }

 private:
  static OvsChange Removal(const OvsPlace& place) {
    OvsChange change;
    if (place.port->interfaces.size() > 1)
      change.RemoveInterface(*place.port, *place.interface);
    else
      change.RemovePort(*place.bridge, *place.port);
    return change;
  }

  OvsChange Addition(const OvsBridge& bridge) const {
    const FormerUplink former = formerIn(bridge, nic_);
    const auto port = std::find_if(bridge.ports.begin(), bridge.ports.end(),
                                   [&](const OvsPort& one) { return one.name == former.port; });
    OvsChange change;
    if (port != bridge.ports.end())
      change.AddInterface(*port, nic_, former.interfaceSettings);
    else
      change.AddPortWithNew(bridge, former.port, former.settings, nic_, former.interfaceSettings);
    change.RemoveExternalId("Bridge", bridge.id, kHad + nic_);
    return change;
  }

  void DemandFree(const OvsPlace& place) const {
    std::string user = place ? place.bridge->name : masterOf(files_, nic_);
    Switches switches = readSwitchFiles(own_);
    if (const Switch* of = switchWithUplink(switches, nic_)) user = of->name;
    if (!user.empty())
      throw HostCtlException(context_.operation, context_.object, "is an uplink of " + user);
  }

  /// What is only too slow stays in the database, so a failed change is looked for there.
  template <class WayBack>
  void CommitOr(const OvsChange& change, const WayBack& wayBack) const try {
    change.Commit(context_);
  } catch (const HostCtlException&) {
    const auto now = readOvsBridges(files_, context_.operation);
    wayBack(bridgeNamed(now, context_, bridge_.name), findOnOvs(now, nic_)).CommitAnyway(context_);
    throw;
  }

  const Files& files_;
  const ChangeContext context_;
  const OwnFiles own_;
  const NetworkLock lock_;
  const OvsBridges bridges_;
  const OvsBridge& bridge_;
  const std::string nic_;
};

}  // namespace

std::vector<DistributedSwitchRecord> readDistributedSwitches(const Files& files) {
  std::vector<DistributedSwitchRecord> records;
  for (const auto& bridge : readOvsBridges(files, kRead))
    if (bridge.controlled) records.push_back(switchRecord(files, bridge));
  return records;
}

void nameOvsBridges(const Files& files, const OvsBridges& bridges,
                    std::vector<HostCtl::Network::PnicRecord>& pnics) {
  const auto nics = physicalNics(files);
  for (auto& pnic : pnics)
    if (const OvsPlace place = findOnOvs(bridges, kernelNamed(nics, pnic.name)))
      pnic.switchName = place.bridge->name;
}

void addDistributedUplink(const Files& files, const std::string& switchName,
                          const std::string& pnic) {
  UplinkEdit(files, {"AddDistributedUplink", pnic}, switchName).Add();
}

void removeDistributedUplink(const Files& files, const std::string& switchName,
                             const std::string& pnic) {
  UplinkEdit(files, {"RemoveDistributedUplink", pnic}, switchName).Remove();
}

}  // namespace HostLinux
