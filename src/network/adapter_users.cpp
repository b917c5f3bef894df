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

/// Those of the adapters that are among the names.
std::vector<std::string> amongst(const std::vector<std::string>& names, const Pnics& pnics) {
  std::vector<std::string> found;
  for (const PnicRecord& pnic : pnics)
    if (std::find(names.begin(), names.end(), pnic.name) != names.end()) found.push_back(pnic.name);
  return found;
}

AdapterUser userOf(const Pnics& pnics, const VirtualSwitch& one) {
  AdapterUser user{one.GetName(), amongst(one.GetUplinks(), pnics), {}};
  if (user.pnics.empty()) return user;
  for (const auto& group : one.GetPortGroups())
    if (!amongst(group->GetNicTeamingPolicy().GetActiveUplinks(), pnics).empty())
      user.portGroups.push_back(group->GetName());
  return user;
}

void addStandardSwitches(Users& users, const Pnics& pnics) {
  for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches())
    if (AdapterUser user = userOf(pnics, *one); !user.pnics.empty()) users.push_back(user);
}

void addDistributedSwitches(Users& users, const Pnics& pnics) {
  for (const auto& one : TarnCtl::Network::DistributedSwitchInfoImpl().GetDistributedSwitches())
    if (auto taken = amongst(one->GetUplinks(), pnics); !taken.empty())
      users.push_back({one->GetName(), std::move(taken), {}});
}

/// What the adapters themselves say.
void addOwnSwitches(Users& users, const Pnics& pnics) {
  for (const PnicRecord& pnic : pnics) {
    if (pnic.switchName.empty()) continue;
    const auto listed = std::find_if(users.begin(), users.end(), [&](const AdapterUser& user) {
      return user.switchName == pnic.switchName;
    });
    if (listed == users.end())
      users.push_back({pnic.switchName, {pnic.name}, {}});
    else if (amongst(listed->pnics, {pnic}).empty())
      listed->pnics.push_back(pnic.name);
  }
}

bool logged(void (*add)(Users&, const Pnics&), Users& users, const Pnics& pnics) try {
  add(users, pnics);
  return true;
} catch (const HostCtl::Lib::HostCtlException& e) {
  logError("%s", e.what());
  return false;
}

}  // namespace

std::optional<Users> findAdapterUsers(const Pnics& pnics) {
  Users users;
  const bool standard = logged(addStandardSwitches, users, pnics);
  const bool distributed = logged(addDistributedSwitches, users, pnics);
  addOwnSwitches(users, pnics);
  const bool unsaid = users.empty() && !(standard && distributed);
  return unsaid ? std::nullopt : std::optional(std::move(users));
}

}  // namespace Kiva
