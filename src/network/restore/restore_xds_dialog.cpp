// SPDX-License-Identifier: MIT
#include "network/restore/restore_xds_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/management_interface.h"
#include "network/restore/no_uplinks_dialog.h"
#include "network/restore/outcome.h"
#include "network/restore/uplinks_dialog.h"
#include "network/vlan_dialog.h"
#include "system/audit_events.h"
#include "system/host_tools.h"
#include "ui/markup_text.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::HostLocalPort;

namespace {

constexpr int kFieldWidth = 6;
constexpr std::int16_t kLastVlan = 4094;

}  // namespace

RestorexDSDialog::RestorexDSDialog(Frame& owner)
    : FieldDialog(owner, {.title = TextId::kRestoreXdsTitle,
                          .text = TextId::kEnterXdsPortProperties,
                          .width = 78,
                          .height = 13,
                          .topHeight = 6,
                          .footer = std::string(kToggle) + kOkCancelFooter}),
      vlan_(AddField("VLAN ID: ", kFieldWidth)),
      unblocked_(Rows().Append(
          std::make_unique<CheckItem>(Text(TextId::kRestoreDefaultBlockedSetting), true))),
      select_(Rows().Append(std::make_unique<CheckItem>(Text(TextId::kSelectXdsUplinks)))) {}

int RestorexDSDialog::Foreground() {
  if (!Find(*Owner())) return 0;
  discardTypeAhead();
  return FieldDialog::Foreground();
}

bool RestorexDSDialog::Find(Frame& over) try {
  nic_ = readManagementInterface();
  at_ = distributedAttachmentOf(*nic_);
  if (at_.on->IsThirdParty())
    return FailWith(over, TextId::kUnableToRestoreThirdPartyXds,
                    at_.on->GetName() + " is managed by somebody else's software");
  if (!at_.on->GetUplinks().empty()) return true;
  logError("%s", Text(TextId::kNoUplinksConfigured));
  NoUplinksDialog dialog(over);
  runWindow(dialog);
  return false;
} catch (const HostCtlException& e) {
  return FailWith(over, TextId::kUnableToRestoreXds, e.what());
}

bool RestorexDSDialog::FailWith(Frame& over, TextId text, const std::string& cause) {
  logError("%s", cause.c_str());
  showOutcome(over, TextId::kRestoreXdsError, Text(text));
  return false;
}

bool RestorexDSDialog::Takes(int key) const {
  return Key::isDigit(key);
}

void RestorexDSDialog::PressKey(int key) {
  auto* check = dynamic_cast<CheckItem*>(Rows().Focused());
  if (!check) return FieldDialog::PressKey(key);
  if (key != Key::kSpace) return;
  check->Toggle();
  Rows().Draw();
}

// The host may be another one than when the dialog opened.
bool RestorexDSDialog::Accept() {
  const auto vlanId = parseVlanId(vlan_.Value());
  if (!vlanId || *vlanId == 0 || *vlanId > kLastVlan)
    return Refuse(vlan_, TextId::kInvalidVlanId, TextId::kEnterValidVlanId);
  if (!Find(*this)) return false;
  const auto uplinks = select_.IsChecked() ? ChooseUplinks() : at_.on->GetUplinks();
  return uplinks && MoveTo({.name = freeHostLocalPort(at_.allPorts),
                            .vlanId = *vlanId,
                            .unblocked = unblocked_.IsChecked(),
                            .uplinks = *uplinks});
}

std::optional<std::vector<std::string>> RestorexDSDialog::ChooseUplinks() {
  const auto names = at_.on->GetUplinks();
  Pnics uplinks = ordered(readPnics().value_or(Pnics()), names);
  uplinks.resize(names.size());
  UplinksDialog dialog(*this, uplinks,
                       uplinksOfOthers(at_.on->GetPorts(), names, nic_->GetInterfaceName()));
  return runWindow(dialog) != 0 ? std::optional(dialog.Selected()) : std::nullopt;
}

bool RestorexDSDialog::MoveTo(const HostLocalPort& port) try {
  const std::string nic = nic_->GetInterfaceName(), on = at_.on->GetName();
  announceOperation("evb.user.kiva.xds.restored", "Restoring xDS " + on);
  logInfo("Moving %s to port %s", nic.c_str(), port.name.c_str());
  nic_->MoveToHostLocalPort(port);
  HmxCmdRefresh();
  showSuccess(*this, plainText("Moved " + nic + " to port " + port.name + " on " + on));
  return true;
} catch (const HostCtlException& e) {
  return FailWith(*this, TextId::kUnableToRestoreXds, e.what());
}

}  // namespace Kiva
