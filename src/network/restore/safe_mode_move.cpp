// SPDX-License-Identifier: MIT
#include "network/restore/safe_mode_move.h"

#include <algorithm>

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/restore/distributed_port.h"
#include "network/restore/migration.h"
#include "network/restore/outcome.h"
#include "system/host_tools.h"
#include "tarnctl/network/virtual_switch_info_impl.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::NicTeamingPolicy;
using HostCtl::Network::TarnNic;

namespace {

using namespace SafeMode;

std::vector<std::string> those(std::vector<std::string> uplinks,
                               const std::vector<std::string>& present) {
  std::erase_if(uplinks, [&](const std::string& pnic) {
    return std::find(present.begin(), present.end(), pnic) == present.end();
  });
  if (uplinks.empty()) throw HostCtlException("none of its uplinks is back");
  return uplinks;
}

/// One attempt: the calls of a plan, and what the operator is shown of them.
class Move {
 public:
  Move(TarnNic& nic, const std::function<void(const std::string&)>& show)
      : nic_(nic), show_(show) {}

  /// Empty on success.
  std::string Try(const NamedCall& what);
  void TakeBack(const Step& step) {
    for (const NamedCall& call : step.undo) Try(call);
  }

 private:
  void Announce(const std::string& name);
  void Require(bool succeeded) const {
    if (!succeeded) throw HostCtlException(trouble_);
  }

  void Do(const AddSwitch& call) { Require(AddStandardSwitch(call.name, &trouble_)); }
  void Do(const RemoveSwitch& call) { Require(RemoveStandardSwitch(call.name, &trouble_)); }
  void Do(const AddPortGroup& call) {
    Require(AddPortGroupToStandardSwitch(call.group.name, call.group.switchName, &trouble_));
  }
  void Do(const RemovePortGroup& call) {
    Require(RemovePortGroupFromStandardSwitch(call.group.name, call.group.switchName, &trouble_));
  }
  void Do(const SetVlan& call) {
    Require(SetVlanOfPortGroup(call.group.name, call.group.switchName, call.vlanId, &trouble_));
  }
  void Do(const TakeUplink& call) {
    if (call.from.kind == SwitchKind::Standard)
      Require(RemoveUplinkFromStandardSwitch(call.from.name, call.pnic, &trouble_));
    else
      findDistributedSwitch(call.from.name)->RemoveUplink(call.pnic);
  }
  void Do(const GiveUplink& call) {
    if (call.to.kind == SwitchKind::Standard)
      Require(AddUplinkToStandardSwitch(call.to.name, call.pnic, &trouble_));
    else
      findDistributedSwitch(call.to.name)->AddUplink(call.pnic);
  }
  void Do(const SetTeaming& call);
  void Do(const MoveNic& call) {
    Require(migrateNic(nic_, call.to.switchName, call.to.name, trouble_));
  }

  TarnNic& nic_;
  const std::function<void(const std::string&)>& show_;
  std::string announced_;
  /// What the one asked for a change says of its failure.
  std::string trouble_;
};

void Move::Announce(const std::string& name) {
  if (name == announced_) return;
  announced_ = name;
  logInfo("%s", name.c_str());
  show_(name);
}

std::string Move::Try(const NamedCall& what) {
  Announce(what.name);
  trouble_.clear();
  try {
    std::visit([this](const auto& one) { Do(one); }, what.call);
    return {};
  } catch (const HostCtlException& e) {
    const std::string trouble = failureOf(what.name, e.what());
    logError("%s", trouble.c_str());
    return trouble;
  }
}

void Move::Do(const SetTeaming& call) {
  const PortGroup& of = call.teaming.of;
  for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches())
    for (const auto& group : one->GetPortGroups())
      if (one->GetName() == of.switchName && group->GetName() == of.name)
        return group->SetNicTeamingPolicy(
            NicTeamingPolicy(those(call.teaming.uplinks, one->GetUplinks())));
  throw HostCtlException("Port group", of.name, "it does not exist");
}

}  // namespace

bool moveManagementNetwork(TarnNic& nic, const Plan& plan,
                           const std::function<void(const std::string&)>& show,
                           std::string& trouble) {
  Move move(nic, show);
  std::vector<const Step*> toUndo;
  for (const Step& step : plan.steps) {
    trouble = move.Try(step.what);
    if (trouble.empty() || step.when == Undo::WhenTried) toUndo.push_back(&step);
    if (!trouble.empty()) break;
  }
  if (trouble.empty()) return true;
  for (auto step = toUndo.rbegin(); step != toUndo.rend(); ++step) move.TakeBack(**step);
  return false;
}

}  // namespace Kiva
