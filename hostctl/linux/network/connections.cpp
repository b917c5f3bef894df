// SPDX-License-Identifier: MIT
#include "linux/network/connections.h"

#include "linux/pnics.h"

namespace HostLinux {

using HostCtl::Network::ConnecteeType;
using HostCtl::Network::ConnectionPoint;

ConnectionPoint connectionOf(const std::string& name, const Switches& switches,
                             const std::optional<OvsInterfaces>& ovs, const Files& files) {
  for (const Switch& one : switches)
    for (const auto& interface : one.interfaces)
      if (interface.name == name)
        return {ConnecteeType::StandardPortGroup, one.name, interface.portGroup};
  const ConnectionPoint opaque{ConnecteeType::Opaque, {}, {}};
  if (ovs) {
    const auto found = ovs->find(name);
    const bool distributed = found != ovs->end() && !found->second.empty();
    return distributed ? ConnectionPoint{ConnecteeType::DistributedPort, found->second, {}}
                       : opaque;
  }
  if (masterOf(files, name) == kOvsMaster) return {ConnecteeType::DistributedPort, {}, {}};
  return opaque;
}

}  // namespace HostLinux
