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

bool contains(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

AdapterUser userOf(const std::string& pnic, const VirtualSwitch& one) {
  AdapterUser user{one.GetName(), {}};
  for (const auto& group : one.GetPortGroups())
    if (contains(group->GetNicTeamingPolicy().GetActiveUplinks(), pnic))
      user.portGroups.push_back(group->GetName());
  return user;
}

std::vector<AdapterUser> standardSwitchesWith(const std::string& pnic) {
  std::vector<AdapterUser> users;
  for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches())
    if (contains(one->GetUplinks(), pnic)) users.push_back(userOf(pnic, *one));
  return users;
}

}  // namespace

std::optional<std::vector<AdapterUser>> findAdapterUsers(const PnicRecord& pnic) try {
  auto users = standardSwitchesWith(pnic.name);
  const bool listed = std::any_of(users.begin(), users.end(), [&](const AdapterUser& user) {
    return user.switchName == pnic.switchName;
  });
  if (!pnic.switchName.empty() && !listed) users.push_back({pnic.switchName, {}});
  return users;
} catch (const HostCtl::Lib::HostCtlException& e) {
  logError("%s", e.what());
  if (pnic.switchName.empty()) return std::nullopt;
  return {{AdapterUser{pnic.switchName, {}}}};
}

}  // namespace Kiva
