// SPDX-License-Identifier: MIT
#include "network/adapter_users.h"

#include <algorithm>

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "tarnctl/network/virtual_switch_info_impl.h"

namespace Kiva {

using HostCtl::Network::PnicRecord;
using HostCtl::Network::VirtualSwitch;

namespace {

using Users = std::vector<AdapterUser>;

bool hasAny(const std::vector<std::string>& names, const Pnics& pnics) {
  return std::any_of(pnics.begin(), pnics.end(), [&](const PnicRecord& pnic) {
    return std::find(names.begin(), names.end(), pnic.name) != names.end();
  });
}

AdapterUser userOf(const Pnics& pnics, const VirtualSwitch& one) {
  AdapterUser user{one.GetName(), {}};
  for (const auto& group : one.GetPortGroups())
    if (hasAny(group->GetNicTeamingPolicy().GetActiveUplinks(), pnics))
      user.portGroups.push_back(group->GetName());
  return user;
}

Users standardSwitchesWith(const Pnics& pnics) {
  Users users;
  for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches())
    if (hasAny(one->GetUplinks(), pnics)) users.push_back(userOf(pnics, *one));
  return users;
}

/// Adds what the adapters themselves say.
Users withOwnSwitches(Users users, const Pnics& pnics) {
  for (const PnicRecord& pnic : pnics) {
    const bool listed = std::any_of(users.begin(), users.end(), [&](const AdapterUser& user) {
      return user.switchName == pnic.switchName;
    });
    if (!pnic.switchName.empty() && !listed) users.push_back({pnic.switchName, {}});
  }
  return users;
}

}  // namespace

std::optional<Users> findAdapterUsers(const Pnics& pnics) try {
  return withOwnSwitches(standardSwitchesWith(pnics), pnics);
} catch (const HostCtl::Lib::HostCtlException& e) {
  logError("%s", e.what());
  auto users = withOwnSwitches({}, pnics);
  return users.empty() ? std::nullopt : std::optional(std::move(users));
}

}  // namespace Kiva
