// SPDX-License-Identifier: MIT
#include "linux/network/switch_settle.h"

#include <syslog.h>

#include <algorithm>
#include <chrono>
#include <set>

#include "hostctl/lib/exception.h"
#include "linux/network/foreign.h"
#include "linux/network/mac_address.h"
#include "linux/network/networkd_bus.h"
#include "linux/network/wait.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

constexpr std::chrono::milliseconds kLeftUndoneAfter{500};

const LinkRow* linkNamed(const std::vector<LinkRow>& links, const std::string& name) {
  const auto found = std::find_if(links.begin(), links.end(),
                                  [&](const LinkRow& link) { return link.name == name; });
  return found == links.end() ? nullptr : &*found;
}

bool isPortOf(const std::vector<LinkRow>& links, const LinkRow& link, const std::string& master) {
  const LinkRow* expected = linkNamed(links, master);
  return master.empty() ? link.master == 0 : link.up && expected && link.master == expected->index;
}

bool isPrimary(const std::vector<LinkRow>& links, const LinkRow& bond, const SwitchUplink& uplink) {
  const LinkRow* link = linkNamed(links, uplink.nic);
  return !link || bond.primary == link->index;
}

bool hasAddress(const SwitchUplink& uplink, const LinkRow& link) {
  const auto permanent = MacAddress::FromString(uplink.permanentAddress);
  return !permanent || link.address == permanent->ForUplink().ToString();
}

bool isSettled(const Switch& one, const SwitchUplink& uplink, const std::vector<LinkRow>& links) {
  const LinkRow* link = linkNamed(links, uplink.nic);
  if (!link) return true;
  const std::string master = one.MasterOf(uplink);
  return isPortOf(links, *link, master) && (master != one.name || hasAddress(uplink, *link));
}

std::string unsettledIn(const Switch& one, const std::vector<LinkRow>& links) {
  const auto isPort = [&](const std::string& name) {
    const LinkRow* link = linkNamed(links, name);
    return link && isPortOf(links, *link, one.name);
  };
  const LinkRow* bridge = linkNamed(links, one.name);
  if (!bridge || !bridge->up) return one.name;
  for (const auto& uplink : one.uplinks)
    if (!isSettled(one, uplink, links)) return uplink.nic;
  if (one.HasBond() && !(isPort(one.BondName()) &&
                         isPrimary(links, *linkNamed(links, one.BondName()), one.uplinks.front())))
    return one.BondName();
  for (const auto& interface : one.interfaces)
    if (!isPort(portOf(interface))) return portOf(interface);
  return {};
}

/// A device of the same name that is made before networkd has heard of the end of the old one stays
/// without ports, because their files go on meaning the old one.
void letNetworkdForget(const Files& files, const std::vector<int>& indices) {
  const auto isForgotten = [&](int index) {
    return !files.Exists("/run/systemd/netif/links/" + std::to_string(index));
  };
  const auto areForgotten = [&] {
    return std::all_of(indices.begin(), indices.end(), isForgotten);
  };
  if (!waitFor(kInForceWithin, areForgotten))
    syslog(LOG_USER | LOG_WARNING, "systemd-networkd did not forget deleted links in 10 seconds");
}

/// networkd compares a file with what it last heard of the link: what was changed while it did so,
/// and a link that somebody put down, stay as they are until it looks again. Where that fails, the
/// link may settle all the same.
void haveLookedAtAgain(const ChangeContext& context, const std::vector<LinkRow>& links,
                       const std::string& name) try {
  if (const LinkRow* link = linkNamed(links, name))
    reconfigureLink(context.operation, context.object, link->index);
  else
    reloadNetworkd(context.operation, context.object);
} catch (const HostCtlException& error) {
  syslog(LOG_USER | LOG_ERR, "%s", error.what());
}

void waitForLinks(const ChangeContext& context, const Switches& switches) {
  const auto lateFrom = std::chrono::steady_clock::now() + kLeftUndoneAfter;
  std::set<std::string> lookedAtAgain;
  std::string missing;
  const bool settled = waitFor(kInForceWithin, [&] {
    const auto links = readLinks(context.operation);
    missing = unsettledLink(switches, links);
    const bool late = std::chrono::steady_clock::now() > lateFrom;
    if (!missing.empty() && late && lookedAtAgain.insert(missing).second)
      haveLookedAtAgain(context, links, missing);
    return missing.empty();
  });
  if (!settled)
    throw HostCtlException(context.operation, context.object,
                           "systemd-networkd did not set up " + missing + " within 10 seconds");
}

// The order keeps what should not pass from passing, but for the moment in which nothing does.
void filterVlans(const ChangeContext& context, const Switch& one,
                 const std::vector<LinkRow>& links) {
  clearDefaultVlan(context.operation, one.name);
  const std::string uplinks = one.UplinkPort();
  if (linkNamed(links, uplinks)) setPortVlans(context.operation, uplinks, one.VlansOfUplink());
  for (const auto& interface : one.interfaces)
    setPortVlans(context.operation, portOf(interface), one.VlansOf(interface));
  setVlanFiltering(context.operation, one.name, VlanFiltering::On);
}

/// A kernel whose bridges cannot has none that does.
bool bridgeFilters(const Files& files, const std::string& bridge) {
  return files.ReadLine("/sys/class/net/" + bridge + "/bridge/vlan_filtering") == "1";
}

/// Switches that are in `before` as they shall be have their VLANs.
void settleVlans(const Files& files, const ChangeContext& context, Switches before,
                 const Switches& after) {
  const auto links = readLinks(context.operation);
  for (const Switch& one : after) {
    const Switch* old = findSwitch(before, one.name);
    if (one.FiltersVlans() && !(old && *old == one))
      filterVlans(context, one, links);
    else if (!one.FiltersVlans() && bridgeFilters(files, one.name))
      setVlanFiltering(context.operation, one.name, VlanFiltering::Off);
  }
}

}  // namespace

std::string unsettledLink(const Switches& switches, const std::vector<LinkRow>& links) {
  for (const Switch& one : switches)
    if (std::string missing = unsettledIn(one, links); !missing.empty()) return missing;
  return {};
}

bool areSettled(const Files& files, const Switches& switches, const std::vector<LinkRow>& links) {
  return unsettledLink(switches, links).empty() &&
         std::all_of(switches.begin(), switches.end(), [&](const Switch& one) {
           return one.FiltersVlans() == bridgeFilters(files, one.name);
         });
}

std::vector<SwitchUplink> uplinksGivenBack(const Switches& before, Switches after) {
  std::vector<SwitchUplink> uplinks;
  for (const Switch& one : before)
    for (const auto& uplink : one.uplinks)
      if (!switchWithUplink(after, uplink.nic)) uplinks.push_back(uplink);
  return uplinks;
}

void releaseNics(const ChangeContext& context, const std::vector<SwitchUplink>& uplinks) {
  const auto ports = readLinks(context.operation);
  for (const auto& uplink : uplinks)
    if (const LinkRow* link = linkNamed(ports, uplink.nic); link && link->master != 0)
      releaseLink(context.operation, uplink.nic);
  const auto links = readLinks(context.operation);
  for (const auto& uplink : uplinks) {
    const LinkRow* link = linkNamed(links, uplink.nic);
    const auto own = MacAddress::FromString(uplink.permanentAddress);
    if (link && own && link->address != own->ToString())
      setLinkAddress(context.operation, uplink.nic, uplink.permanentAddress);
  }
}

void deleteDevices(const Files& files, const ChangeContext& context,
                   const std::set<std::string>& devices) {
  // All are looked up first: one end of a pair takes the other one along.
  std::vector<int> indices;
  for (const auto& device : devices) indices.push_back(indexOf(files, device));
  for (const auto& device : devices) deleteLink(context.operation, device);
  letNetworkdForget(files, indices);
}

void settleSwitches(const Files& files, const ChangeContext& context, const Switches& before,
                    const Switches& after, OwnFiles::Equal equal) {
  deleteDevices(files, context, lostDevices(before, after));
  releaseNics(context, uplinksGivenBack(before, after));
  waitForLinks(context, after);
  settleVlans(files, context, equal == OwnFiles::Equal::InForce ? before : Switches(), after);
}

}  // namespace HostLinux
