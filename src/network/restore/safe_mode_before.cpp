// SPDX-License-Identifier: MIT
#include <algorithm>

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/management_interface.h"
#include "network/restore/distributed_port.h"
#include "network/restore/safe_mode_move.h"
#include "tarnctl/network/virtual_switch_info_impl.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::ConnecteeType;
using HostCtl::Network::TarnNic;
using HostCtl::Network::VirtualSwitch;
using SafeMode::Before;

namespace {

template <typename Value>
Value required(const Answer<Value>& answer) {
  if (!answer.value) throw HostCtlException(answer.trouble);
  return *answer.value;
}

bool loses(const std::vector<std::string>& uplinks, const Before& before) {
  return std::find_first_of(uplinks.begin(), uplinks.end(), before.uplinks.begin(),
                            before.uplinks.end()) != uplinks.end();
}

void addSwitch(const VirtualSwitch& one, Before& before) {
  before.switchNames.push_back(one.GetName());
  for (const auto& group : one.GetPortGroups()) {
    before.portGroupNames.push_back(group->GetName());
    if (before.on.kind != SafeMode::SwitchKind::Standard || before.on.name != one.GetName())
      continue;
    const auto active = group->GetNicTeamingPolicy().GetActiveUplinks();
    if (loses(active, before))
      before.teamings.push_back({{group->GetName(), one.GetName()}, active});
  }
}

// A port may go on naming an uplink that its switch has lost, which is somebody else's by now.
std::vector<std::string> uplinksOf(const DistributedAttachment& from) {
  const auto present = from.on->GetUplinks();
  auto uplinks = from.port.uplinks.value_or(present);
  std::erase_if(uplinks, [&](const std::string& pnic) {
    return std::find(present.begin(), present.end(), pnic) == present.end();
  });
  return uplinks;
}

// A distributed switch out of reach must not keep the interface of another one where it is.
void addDistributedNames(Before& before) try {
  for (const auto& one : TarnCtl::Network::DistributedSwitchInfoImpl().GetDistributedSwitches())
    before.switchNames.push_back(one->GetName());
} catch (const HostCtlException& e) {
  logError("%s", e.what());
}

}  // namespace

Before readBefore(const TarnNic& nic) {
  const auto at = nic.GetConnectionPoint();
  Before before{.nic = nic.GetInterfaceName(),
                .on = {at.switchName},
                .portGroup = at.portGroup,
                .uplinks = {},
                .teamings = {},
                .switchNames = {},
                .portGroupNames = {}};
  if (at.type == ConnecteeType::StandardPortGroup) {
    before.vlanId = required(readVlanId(nic));
    before.uplinks = required(readUplinks(nic));
  } else if (at.type == ConnecteeType::DistributedPort) {
    const DistributedAttachment from = distributedAttachmentOf(nic);
    before.on.kind = SafeMode::SwitchKind::Distributed;
    before.vlanId = from.port.vlanId;
    before.uplinks = uplinksOf(from);
  } else {
    throw HostCtlException(before.nic + " is on no standard or distributed switch");
  }
  if (before.uplinks.empty()) throw HostCtlException(before.nic + " has no uplink to take along");
  for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches())
    addSwitch(*one, before);
  addDistributedNames(before);
  return before;
}

}  // namespace Kiva
