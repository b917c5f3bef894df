// SPDX-License-Identifier: MIT
#include "linux/network/nic_use.h"

#include <fnmatch.h>
#include <linux/if_addr.h>
#include <linux/rtnetlink.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "linux/network/foreign.h"
#include "linux/network/interface_file.h"
#include "linux/network/ip_file.h"
#include "linux/network/ovsdb.h"
#include "linux/network_file.h"
#include "linux/text.h"

namespace HostLinux {

namespace fs = std::filesystem;

namespace {

constexpr const char* kInterfaces = "/sys/class/net";
constexpr const char* kMatch = "Match";
constexpr const char* kNetwork = "Network";
constexpr std::array kUsingKeys = {"Address", "Bond", "Bridge",  "IPVLAN", "IPVTAP",
                                   "MACVLAN", "VLAN", "MACVTAP", "VRF"};

/// networkd's words of one key: of any of them, but of none with "!" before them all.
bool isAmong(std::string_view patterns, const std::string& name) {
  const bool except = patterns.starts_with("!");
  if (except) patterns.remove_prefix(1);
  const auto all = words(patterns);
  return except != std::any_of(all.begin(), all.end(), [&](std::string_view one) {
           return fnmatch(std::string(one).c_str(), name.c_str(), 0) == 0;
         });
}

/// networkd takes colons, hyphens and dots between an address's digits.
std::string digitsOf(std::string_view address) {
  std::string digits(address);
  std::erase_if(digits, [](char c) { return c == ':' || c == '-' || c == '.'; });
  return digits;
}

bool hasOneOf(const LinkRow& nic, std::string_view addresses) {
  const auto all = words(addresses);
  return std::any_of(all.begin(), all.end(), [&](std::string_view one) {
    const auto digits = digitsOf(one);
    return equalIgnoringCase(digits, digitsOf(nic.address)) ||
           equalIgnoringCase(digits, digitsOf(nic.permanentAddress));
  });
}

/// Both keys mean either address: an uplink of ours gets its own back, and then counts by it.
bool fits(std::string_view key, const std::string& value, const LinkRow& nic) {
  if (key == "Name") return isAmong(value, nic.name);
  if (key == "Type") return isAmong(value, "ether");
  return (key == "MACAddress" || key == "PermanentMACAddress") && hasOneOf(nic, value);
}

/// Whether a file is about this adapter by its name, its hardware address or as one of all
/// adapters; what else a file can go by networkd alone knows.
bool isAbout(const IniFile& file, const LinkRow& nic) {
  std::set<std::string> keys;
  for (const IniSection* section : file.Sections(kMatch))
    for (auto& key : section->Keys()) keys.insert(std::move(key));
  return !keys.empty() && std::all_of(keys.begin(), keys.end(), [&](const std::string& key) {
    const auto values = file.GetAll(kMatch, key);
    return std::any_of(values.begin(), values.end(),
                       [&](const std::string& value) { return fits(key, value, nic); });
  });
}

/// The file of others that is in force, or will be when ours is gone. networkd takes a while to say
/// so after it was told.
std::string fileBesideOurs(const Files& files, const LinkRow& nic) {
  const fs::path inForce = networkFileOf(files, nic.index);
  const auto isOurs = [](const fs::path& file) {
    return file.filename().string().starts_with(kOwnNetworkFiles);
  };
  if (!inForce.empty() && !isOurs(inForce) && files.Exists(inForce)) return inForce;
  for (const auto& [name, path] : filesForNetworkd(files))
    if (name.ends_with(".network") && !isOurs(name) &&
        isAbout(IniFile(files.Read(path).value_or("")), nic))
      return path;
  return {};
}

bool usesIt(const IniFile& file) {
  const auto says = [&](const char* key) { return file.Get(kNetwork, key).value_or(""); };
  const bool asks = meansDhcpv4(says("DHCP")) || meansDhcpv6(says("DHCP"));
  return asks || meansYes(says("IPv6AcceptRA")) || !file.Sections("Address").empty() ||
         std::any_of(kUsingKeys.begin(), kUsingKeys.end(),
                     [&](const char* key) { return !says(key).empty(); });
}

std::string configuredBy(const Files& files, const LinkRow& nic) {
  if (auto manager = foreignManagerOf(files, nic.name); !manager.empty()) return manager;
  const std::string path = fileBesideOurs(files, nic);
  return !path.empty() && usesIt(fileOfOthers(files, path, nic.name)) ? path : "";
}

bool isKernelsOwn(const AddressRow& row) {
  const bool ofAdvertisement = (row.flags & (IFA_F_MANAGETEMPADDR | IFA_F_TEMPORARY)) != 0 &&
                               (row.flags & IFA_F_NOPREFIXROUTE) == 0;
  return row.scope >= RT_SCOPE_LINK ||
         (std::holds_alternative<HostCtl::Network::Ipv6Address>(row.address) && ofAdvertisement);
}

}  // namespace

NicUses::NicUses(const Files& files, const OwnFiles& own, const Switches& switches,
                 const std::string& operation, OpenVswitch openVswitch)
    : files_(files),
      own_(own),
      ours_(devicesOf(switches)),
      bridges_(openVswitch == OpenVswitch::Asked ? readOvsBridges(files, operation) : OvsBridges{}),
      tables_(readNetworkTables(operation)) {
  // Not every driver tells the kernel, and an uplink does not carry its own.
  for (const Switch& one : switches)
    for (const auto& uplink : one.uplinks)
      for (LinkRow& link : tables_.links)
        if (link.name == uplink.nic && link.permanentAddress.empty())
          link.permanentAddress = uplink.permanentAddress;
}

std::string NicUses::UserAbove(const std::string& nic) const {
  for (const auto& link : files_.List(kInterfaces))
    if (ours_.count(link) == 0 &&
        files_.Exists(std::string(kInterfaces) + "/" + link + "/lower_" + nic))
      return link;
  return {};
}

std::string NicUses::AddressOf(const std::string& nic) const {
  if (givesAddresses(own_.Read(ownFileName(nic, "network")))) return {};
  for (const AddressRow& row : tables_.addresses)
    if (row.index == indexOf(files_, nic) && !isKernelsOwn(row))
      return HostCtl::Network::toString(row.address);
  return {};
}

std::string NicUses::ManagerOf(const std::string& nic) const {
  const auto& links = tables_.links;
  const auto link =
      std::find_if(links.begin(), links.end(), [&](const LinkRow& one) { return one.name == nic; });
  return configuredBy(files_, link == links.end() ? LinkRow{0, nic} : *link);
}

std::string NicUses::Of(const std::string& nic) const {
  if (const auto manager = ManagerOf(nic); !manager.empty()) return "is configured by " + manager;
  if (const auto place = findOnOvs(bridges_, nic)) return "is an uplink of " + place.bridge->name;
  if (const auto user = UserAbove(nic); !user.empty()) return "is used by " + user;
  const auto address = AddressOf(nic);
  return address.empty() ? "" : "has the address " + address;
}

}  // namespace HostLinux
