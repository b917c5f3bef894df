// SPDX-License-Identifier: MIT
#include "network/restore/create_port_group_dialog.h"

#include <algorithm>

#include "core/keys.h"
#include "hostctl/network/switch_names.h"
#include "network/restore/outcome.h"
#include "system/audit_events.h"
#include "system/host_tools.h"
#include "ui/markup_text.h"

namespace Kiva {

namespace {

constexpr int kFieldWidth = 48;

bool isTaken(const std::string& name) {
  const auto switches = readStandardSwitches();
  return std::any_of(switches.begin(), switches.end(), [&](const StandardSwitch& one) {
    return std::find(one.portGroups.begin(), one.portGroups.end(), name) != one.portGroups.end();
  });
}

}  // namespace

CreatePortGroupDialog::CreatePortGroupDialog(Frame& owner)
    : FieldDialog(owner, {.title = TextId::kCreatePortGroup,
                          .text = TextId::kEnterPortGroupProperties,
                          .width = 80,
                          .height = 12,
                          .topHeight = 6,
                          .footer = kDetailsChangeFooter}),
      name_(AddField(Text(TextId::kPortgroupNameLabel), kFieldWidth)),
      switch_(Rows().Append(std::make_unique<SwitchRow>(
          Text(TextId::kSwitchNameLabel), readStandardSwitches(),
          [](const StandardSwitch& one) { return plainText(one.name); }))) {}

bool CreatePortGroupDialog::Takes(int key) const {
  return Key::isPrintable(key);
}

void CreatePortGroupDialog::ShowDetails() {
  switch_.ShowDetails(*this);
}

bool CreatePortGroupDialog::Accept() {
  const std::string name = name_.Value();
  if (!HostCtl::Network::isPortGroupName(name) || isTaken(name))
    return Refuse(name_, TextId::kInvalidArgument, TextId::kEnterValidPortGroupName);
  if (!switch_.Current())
    return Refuse(switch_, TextId::kInvalidArgument, TextId::kEnterValidStandardSwitchName);
  const std::string on = switch_.Current()->name;
  announceOperation("evb.user.kiva.port.group.created",
                    "Creating port group " + name + " on " + on);
  std::string trouble;
  if (!AddPortGroupToStandardSwitch(name, on, &trouble)) return showFailure(*this, trouble), false;
  showSuccess(*this, Text(TextId::kSuccessfullyCreatedPortgroup) + plainText(name));
  return true;
}

}  // namespace Kiva
