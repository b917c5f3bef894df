// SPDX-License-Identifier: MIT
#include "network/restore/host_local_port.h"

#include <algorithm>
#include <boost/regex.hpp>
#include <iterator>

#include "network/restore/names.h"

namespace Kiva {

using HostCtl::Network::DistributedPort;

namespace {

constexpr const char* kPrefix = "host-local-";

bool uses(const DistributedPort& port, const std::string& uplink) {
  return !port.uplinks ||
         std::find(port.uplinks->begin(), port.uplinks->end(), uplink) != port.uplinks->end();
}

}  // namespace

bool isHostLocalPort(const std::string& name) {
  static const boost::regex pattern(std::string(kPrefix) + "[0-9]+");
  return boost::regex_match(name, pattern);
}

std::string freeHostLocalPort(const Ports& ports) {
  std::vector<std::string> taken;
  for (const DistributedPort& port : ports) taken.push_back(port.name);
  return firstFreeName(kPrefix, taken);
}

std::vector<std::string> uplinksOfOthers(const Ports& ports,
                                         const std::vector<std::string>& uplinks,
                                         const std::string& nic) {
  std::vector<std::string> used;
  std::copy_if(uplinks.begin(), uplinks.end(), std::back_inserter(used),
               [&](const std::string& uplink) {
                 return std::any_of(ports.begin(), ports.end(), [&](const DistributedPort& port) {
                   return isHostLocalPort(port.name) && port.nic != nic && uses(port, uplink);
                 });
               });
  return used;
}

}  // namespace Kiva
