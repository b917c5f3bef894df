// SPDX-License-Identifier: MIT
#include "network/restore/safe_mode_move.h"

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/restore/distributed_port.h"
#include "network/restore/migration.h"
#include "system/host_tools.h"
#include "tarnctl/network/virtual_switch_info_impl.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::NicTeamingPolicy;
using HostCtl::Network::TarnNic;

namespace {

using namespace SafeMode;

// What a tool says of its failure stands in the log.
void require(bool succeeded, const std::string& trouble = {}) {
  if (!succeeded) throw HostCtlException(trouble);
}

/// One attempt: the calls of a plan, and what the operator is shown of them.
class Move {
 public:
  Move(TarnNic& nic, const std::function<void(const std::string&)>& show)
      : nic_(nic), show_(show) {}

  /// Empty on success.
  std::string Try(const std::string& name, const Call& call);
  void TakeBack(const Step& step) {
    for (const Call& call : step.undo) Try(step.undoName, call);
  }

 private:
  void Announce(const std::string& name);

  void Do(const AddSwitch& call) { require(AddStandardSwitch(call.name)); }
  void Do(const RemoveSwitch& call) { require(RemoveStandardSwitch(call.name)); }
  void Do(const AddPortGroup& call) {
    require(AddPortGroupToStandardSwitch(call.group.name, call.group.switchName));
  }
  void Do(const RemovePortGroup& call) {
    require(RemovePortGroupFromStandardSwitch(call.group.name, call.group.switchName));
  }
  void Do(const SetVlan& call) {
    require(SetVlanOfPortGroup(call.group.name, call.group.switchName, call.vlanId));
  }
  void Do(const TakeUplink& call) {
    if (call.from.kind == SwitchKind::Standard)
      require(RemoveUplinkFromStandardSwitch(call.from.name, call.pnic));
    else
      findDistributedSwitch(call.from.name)->RemoveUplink(call.pnic);
  }
  void Do(const GiveUplink& call) {
    if (call.to.kind == SwitchKind::Standard)
      require(AddUplinkToStandardSwitch(call.to.name, call.pnic));
    else
      findDistributedSwitch(call.to.name)->AddUplink(call.pnic);
  }
  void Do(const SetTeaming& call);
  void Do(const MoveNic& call) {
    std::string trouble;
    require(migrateNic(nic_, call.to.switchName, call.to.name, trouble), trouble);
  }

  TarnNic& nic_;
  const std::function<void(const std::string&)>& show_;
  std::string announced_;
};

void Move::Announce(const std::string& name) {
  if (name == announced_) return;
  announced_ = name;
  logInfo("%s", name.c_str());
  show_(name);
}

std::string Move::Try(const std::string& name, const Call& call) {
  Announce(name);
  try {
    std::visit([this](const auto& one) { Do(one); }, call);
    return {};
  } catch (const HostCtlException& e) {
    const std::string cause = e.what();
    const std::string trouble = name + " failed" + (cause.empty() ? "" : ": " + cause);
    logError("%s", trouble.c_str());
    return trouble;
  }
}

void Move::Do(const SetTeaming& call) {
  const PortGroup& of = call.teaming.of;
  for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches())
    for (const auto& group : one->GetPortGroups())
      if (one->GetName() == of.switchName && group->GetName() == of.name)
        group->SetNicTeamingPolicy(NicTeamingPolicy(call.teaming.uplinks));
}

}  // namespace

bool moveManagementNetwork(TarnNic& nic, const Plan& plan,
                           const std::function<void(const std::string&)>& show,
                           std::string& trouble) {
  Move move(nic, show);
  std::vector<const Step*> toUndo;
  for (const Step& step : plan.steps) {
    trouble = move.Try(step.name, step.call);
    if (trouble.empty() || step.when == Undo::WhenTried) toUndo.push_back(&step);
    if (!trouble.empty()) break;
  }
  if (trouble.empty()) return true;
  for (auto step = toUndo.rbegin(); step != toUndo.rend(); ++step) move.TakeBack(**step);
  return false;
}

}  // namespace Kiva
