// SPDX-License-Identifier: MIT
#include "hostseam/management_nic.h"

#include <algorithm>

namespace HostSeam {

namespace {

bool hasGlobalAddress(const KernelNic& nic) {
  const auto& config = nic.running;
  if (!config.GetIpv4Address().IsEmpty()) return true;
  const auto& networks = config.GetIpv6Networks();
  return std::any_of(networks.begin(), networks.end(),
                     [](const auto& network) { return !network.address.IsLinkLocal(); });
}

}  // namespace

std::optional<KernelNic> chooseManagementNic(const std::vector<KernelNic>& nics) {
  const auto ours = [](const KernelNic& nic) { return nic.setUpByKiva; };
  const auto routed = [](const KernelNic& nic) { return nic.carriesDefaultRoute; };
  for (const auto& wanted :
       {+ours, +routed, +[](const KernelNic& nic) { return hasGlobalAddress(nic); }}) {
    const auto found = std::find_if(nics.begin(), nics.end(), wanted);
    if (found != nics.end()) return *found;
  }
  return std::nullopt;
}

}  // namespace HostSeam
