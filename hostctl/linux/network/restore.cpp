// SPDX-License-Identifier: MIT
#include <syslog.h>

#include <algorithm>
#include <chrono>

#include "hostctl/lib/exception.h"
#include "linux/network/ip_file.h"
#include "linux/network/raised_links.h"
#include "linux/network/restore.h"
#include "linux/network/switches.h"
#include "linux/network/wait.h"
#include "linux/pnics.h"

namespace HostLinux {

namespace {

constexpr const char* kOperation = "AutoConfigNetwork";
constexpr const char* kSwitch = "vSwitch0";
constexpr const char* kPortGroup = "Management Network";
constexpr std::chrono::seconds kLinkWithin{10};

std::vector<LinkRow> linksOf(const std::vector<std::string>& nics) {
  const auto links = readLinks(kOperation);
  std::vector<LinkRow> found;
  for (const auto& nic : nics)
    for (const LinkRow& link : links)
      if (link.name == nic) found.push_back(link);
  return found;
}

/// A link that comes takes a moment, so an adapter further down is not preferred for being quicker.
std::string firstWithLink(const std::vector<std::string>& nics) {
  constexpr std::chrono::seconds kForTheFirst{4};
  const auto start = std::chrono::steady_clock::now();
  std::string found = nics.front();
  waitFor(kLinkWithin, [&] {
    const auto links = linksOf(nics);
    const auto with =
        std::find_if(links.begin(), links.end(), [](const LinkRow& link) { return link.carrier; });
    if (with == links.end()) return false;
    if (with != links.begin() && std::chrono::steady_clock::now() - start < kForTheFirst)
      return false;
    found = with->name;
    return true;
  });
  return found;
}

/// Whether it can have a link at all: one without its firmware cannot, or one that has just gone.
bool isRaised(const std::string& nic, RaisedLinks& raised) try {
  raised.Raise(nic);
  return true;
} catch (const HostCtl::Lib::HostCtlException& error) {
  syslog(LOG_USER | LOG_ERR, "%s is passed over: %s", nic.c_str(), error.what());
  return false;
}

std::string chooseNic(const SwitchEditor& editor, RaisedLinks& raised) {
  auto nics = nicsForDefault(editor);
  std::erase_if(nics, [&](const std::string& nic) { return !isRaised(nic, raised); });
  if (nics.empty()) editor.Refuse("no adapter can be brought up");
  return firstWithLink(nics);
}

FileChange managementFile(const std::string& macAddress) {
  IniFile file;
  file.Set("Match", "Name", kManagementNic);
  if (!macAddress.empty()) file.Set("Link", "MACAddress", macAddress);
  HostCtl::Network::IpConfig config;
  config.SetUseDhcp(true);
  config.SetDhcpDns(true);
  config.EnableIpv6();
  setIpConfig(file, kManagementNic, config, Ipv6Half::InForce);
  return {ownFileName(kManagementNic, "network"), file.Text()};
}

Switches switchesWith(std::vector<SwitchUplink> uplinks) {
  return {{kSwitch, std::move(uplinks), {{kPortGroup, 0}}, {{kManagementNic, kPortGroup}}}};
}

SwitchUplink uplinkFor(SwitchEditor& editor, const std::string& nic) {
  if (Switch* of = switchWithUplink(editor.All(), nic))
    for (const auto& uplink : of->uplinks)
      if (uplink.nic == nic) return {nic, uplink.permanentAddress, true};
  return editor.NewUplink(nic);
}

}  // namespace

std::vector<std::string> nicsForDefault(const SwitchEditor& editor) {
  for (const auto& device : devicesOf(switchesWith({}))) editor.DemandOwn(device);
  return editor.FreeNics();
}

void autoConfigureNetwork(const Files& files) {
  SwitchEditor editor(files, {kOperation, kSwitch});
  RaisedLinks raised(kOperation);
  const SwitchUplink uplink = uplinkFor(editor, chooseNic(editor, raised));
  editor.All() = switchesWith({uplink});
  editor.ApplyAfresh({managementFile(uplink.permanentAddress)});
  raised.Keep(uplink.nic);
}

}  // namespace HostLinux
