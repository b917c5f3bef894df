// SPDX-License-Identifier: MIT
#include "linux/network/change_note.h"

#include <algorithm>

#include "linux/text.h"

namespace HostLinux {

namespace {

constexpr const char* kDevice = "device";
constexpr const char* kUplink = "uplink";

std::string lineOf(const char* kind, const std::string& name, const std::vector<LinkRow>& links) {
  const auto link = std::find_if(links.begin(), links.end(),
                                 [&](const LinkRow& one) { return one.name == name; });
  const int index = link == links.end() ? 0 : link->index;
  return std::string(kind) + " " + std::to_string(index) + " " + name;
}

}  // namespace

std::string noteOf(const Losses& losses, const std::vector<LinkRow>& links) {
  std::string note = "begun\n";
  for (const auto& device : losses.devices) note += lineOf(kDevice, device, links) + "\n";
  for (const auto& uplink : losses.uplinks)
    note += lineOf(kUplink, uplink.nic, links) + " " + uplink.permanentAddress + "\n";
  return note;
}

Losses leftOf(const std::string& note, const std::vector<LinkRow>& links, Switches switches) {
  Losses left;
  const auto known = devicesOf(switches);
  std::set<int> masters = {0};
  for (const LinkRow& link : links)
    if (known.count(link.name) != 0) masters.insert(link.index);
  // Devices come first there.
  for (const auto line : lines(note))
    for (const LinkRow& link : links) {
      const std::string uplink = lineOf(kUplink, link.name, links) + " ";
      if (line == lineOf(kDevice, link.name, links) && known.count(link.name) == 0) {
        left.devices.insert(link.name);
        masters.insert(link.index);
      }
      if (line.starts_with(uplink) && masters.count(link.master) != 0 &&
          !switchWithUplink(switches, link.name))
        left.uplinks.push_back({link.name, std::string(line.substr(uplink.size())), true});
    }
  return left;
}

}  // namespace HostLinux
