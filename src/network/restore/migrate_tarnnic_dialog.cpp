// SPDX-License-Identifier: MIT
#include "network/restore/migrate_tarnnic_dialog.h"

#include <algorithm>

#include "core/keys.h"
#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/management_interface.h"
#include "network/restore/migration.h"
#include "network/restore/outcome.h"
#include "system/audit_events.h"
#include "tarnctl/network/network_info_impl.h"
#include "ui/markup_text.h"

namespace Kiva {

using HostCtl::Network::ConnecteeType;
using HostCtl::Network::ConnectionPoint;
using HostCtl::Network::TarnNic;

namespace {

using Nics = std::vector<std::unique_ptr<TarnNic>>;

/// The management interface first; none, which is logged, where the host does not tell.
Nics readTarnNics() try {
  Nics nics = TarnCtl::Network::NetworkInfoImpl().GetTarnNics();
  const auto management = findManagementInterface();
  if (management)
    std::stable_partition(nics.begin(), nics.end(), [&](const auto& nic) {
      return nic->GetInterfaceName() == management->GetInterfaceName();
    });
  return nics;
} catch (const HostCtl::Lib::HostCtlException& e) {
  logError("%s", e.what());
  return {};
}

std::vector<PortGroupChoice> portGroupChoices() {
  std::vector<PortGroupChoice> choices;
  for (const StandardSwitch& one : readStandardSwitches())
    for (const std::string& group : one.portGroups) choices.push_back({group, one});
  return choices;
}

std::string nameOf(const PortGroupChoice& choice) {
  constexpr int kColumns = 58;
  return portGroupText(choice.name, choice.of.name, kColumns);
}

bool isOn(const ConnectionPoint& at, const PortGroupChoice& choice) {
  return at.type == ConnecteeType::StandardPortGroup && at.switchName == choice.of.name &&
         at.portGroup == choice.name;
}

}  // namespace

MigrateTarnnicDialog::MigrateTarnnicDialog(Frame& owner)
    : FieldDialog(owner, {.title = TextId::kMigrateTarnNicToStandardSwitch,
                          .text = TextId::kChooseTarnNicToMigrate,
                          .width = 80,
                          .height = 11,
                          .topHeight = 5,
                          .footer = kDetailsChangeFooter}),
      nic_(Rows().Append(std::make_unique<NicRow>(
          "Tarn NIC: ", readTarnNics(),
          [](const auto& nic) { return plainText(nic->GetInterfaceName()); }))),
      portGroup_(Rows().Append(
          std::make_unique<PortGroupRow>("Portgroup: ", portGroupChoices(), nameOf))) {
  ShowOwnPortGroup();
}

void MigrateTarnnicDialog::ShowOwnPortGroup() {
  if (!nic_.Current()) return;
  const ConnectionPoint at = connectionOf(**nic_.Current());
  const auto& choices = portGroup_.Entries();
  const auto own = std::find_if(choices.begin(), choices.end(),
                                [&](const PortGroupChoice& choice) { return isOn(at, choice); });
  if (own != choices.end()) portGroup_.Show(static_cast<std::size_t>(own - choices.begin()));
}

void MigrateTarnnicDialog::PressKey(int key) {
  FieldDialog::PressKey(key);
  if (!nic_.IsFocused() || (key != Key::kLeft && key != Key::kRight)) return;
  ShowOwnPortGroup();
  Rows().Draw();
}

void MigrateTarnnicDialog::ShowDetails() {
  if (nic_.IsFocused())
    nic_.ShowDetails(*this);
  else
    portGroup_.ShowDetails(*this);
}

bool MigrateTarnnicDialog::Accept() {
  const auto* nic = nic_.Current();
  const PortGroupChoice* target = portGroup_.Current();
  if (!nic) return Refuse(nic_, TextId::kInvalidArgument, TextId::kChooseTarnNicToMigrate);
  if (!target) return Refuse(portGroup_, TextId::kInvalidArgument, TextId::kChooseTarnNicToMigrate);
  return isOn(connectionOf(**nic), *target) || Migrate(**nic, *target);
}

bool MigrateTarnnicDialog::Migrate(TarnNic& nic, const PortGroupChoice& target) {
  const std::string name = nic.GetInterfaceName(), place = target.name + " on " + target.of.name;
  announceOperation("evb.user.kiva.tarnnic.migrated", "Migrating " + name + " to " + place);
  std::string trouble;
  if (!migrateNic(nic, target.of.name, target.name, trouble))
    return showFailure(*this, trouble), false;
  showSuccess(*this, plainText("Migrated " + name + " to " + place));
  return true;
}

}  // namespace Kiva
