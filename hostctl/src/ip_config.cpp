// SPDX-License-Identifier: MIT
#include "hostctl/network/ip_config.h"

#include <algorithm>
#include <iterator>

namespace HostCtl::Network {

std::vector<Ipv6Network> IpConfig::GetStaticIpv6Networks() const {
  std::vector<Ipv6Network> found;
  std::copy_if(ipv6Networks_.begin(), ipv6Networks_.end(), std::back_inserter(found),
               [](const Ipv6Network& one) { return one.type == AddressType::Static; });
  return found;
}

}  // namespace HostCtl::Network
