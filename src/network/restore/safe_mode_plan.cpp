// SPDX-License-Identifier: MIT
#include "network/restore/safe_mode_plan.h"

#include "network/restore/names.h"

namespace Kiva {

namespace {

using namespace SafeMode;

void addPlace(const Before& before, Plan& plan) {
  const PortGroup& to = plan.to;
  const std::string creating = "Creating port group " + to.name;
  plan.steps = {
      {{"Creating standard switch " + to.switchName, AddSwitch{to.switchName}},
       {{"Removing standard switch " + to.switchName, RemoveSwitch{to.switchName}}}},
      {{creating, AddPortGroup{to}}, {{"Removing port group " + to.name, RemovePortGroup{to}}}}};
  if (before.vlanId != 0) plan.steps.push_back({{creating, SetVlan{to, before.vlanId}}});
}

// A port group forgets an adapter that its switch loses. So the teaming is set again after the last
// one, which is the first that went.
void addUplinks(const Before& before, Plan& plan) {
  std::vector<NamedCall> remembering;
  for (const Teaming& teaming : before.teamings)
    remembering.push_back({"Restoring the teaming of " + teaming.of.name, SetTeaming{teaming}});
  for (const std::string& pnic : before.uplinks) {
    const std::string moving = "Moving uplink " + pnic, back = moving + " back";
    std::vector<NamedCall> giveBack = {{back, GiveUplink{pnic, before.on}}};
    giveBack.insert(giveBack.end(), remembering.begin(), remembering.end());
    remembering.clear();
    const Switch to = {plan.to.switchName};
    plan.steps.push_back({{moving, TakeUplink{pnic, before.on}}, std::move(giveBack)});
    plan.steps.push_back({{moving, GiveUplink{pnic, to}}, {{back, TakeUplink{pnic, to}}}});
  }
}

// Nothing changes for an interface that is where it shall be. A distributed switch takes none back;
// the host moves an interface whole or not at all.
void addNic(const Before& before, Plan& plan) {
  const std::string moving = "Moving " + before.nic;
  plan.steps.push_back({{moving, MoveNic{plan.to}}});
  if (before.on.kind == SwitchKind::Distributed) return;
  Step& step = plan.steps.back();
  step.undo = {{moving + " back", MoveNic{{before.portGroup, before.on.name}}}};
  step.when = Undo::WhenTried;
}

}  // namespace

Plan planSafeMode(const Before& before) {
  Plan plan;
  plan.to = {firstFreeName("Management Network", before.portGroupNames),
             firstFreeName("vSwitch", before.switchNames)};
  addPlace(before, plan);
  addUplinks(before, plan);
  addNic(before, plan);
  return plan;
}

}  // namespace Kiva
