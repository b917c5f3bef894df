// SPDX-License-Identifier: MIT
#include "network/restore/create_xss_dialog.h"

#include <algorithm>

#include "core/keys.h"
#include "core/log.h"
#include "hostctl/network/switch_names.h"
#include "network/adapter_users.h"
#include "network/restore/outcome.h"
#include "network/restore/standard_switches.h"
#include "system/audit_events.h"
#include "system/host_tools.h"
#include "ui/markup_text.h"

namespace Kiva {

using HostCtl::Network::PnicRecord;

namespace {

constexpr int kFieldWidth = 32;

/// What a switch has already; what the host does not tell counts as free, since it will not let a
/// used one go.
bool isUsed(const std::vector<AdapterUser>& users, const PnicRecord& pnic) {
  return std::any_of(users.begin(), users.end(), [&](const AdapterUser& user) {
    return std::find(user.pnics.begin(), user.pnics.end(), pnic.name) != user.pnics.end();
  });
}

std::vector<AdapterUser> usersOf(const Pnics& pnics) {
  return findAdapterUsers(pnics).value_or(std::vector<AdapterUser>());
}

/// The free adapters, none, the used ones.
Pnics uplinkChoices() {
  Pnics pnics = ordered(readPnics().value_or(Pnics()), {});
  const auto users = usersOf(pnics);
  const auto used = std::stable_partition(
      pnics.begin(), pnics.end(), [&](const PnicRecord& pnic) { return !isUsed(users, pnic); });
  pnics.insert(used, PnicRecord());
  return pnics;
}

/// By now, which may be long after the dialog opened.
bool isUsedNow(const std::string& uplink) {
  Pnics pnics = readPnics().value_or(Pnics());
  std::erase_if(pnics, [&](const PnicRecord& pnic) { return pnic.name != uplink; });
  return !usersOf(pnics).empty();
}

bool isTaken(const std::string& name) {
  const auto switches = readStandardSwitches();
  return std::any_of(switches.begin(), switches.end(),
                     [&](const StandardSwitch& one) { return one.name == name; });
}

}  // namespace

CreateXssDialog::CreateXssDialog(Frame& owner)
    : FieldDialog(owner, {.title = TextId::kCreateStandardSwitch,
                          .text = TextId::kEnterVSwitchProperties,
                          .width = 80,
                          .height = 12,
                          .topHeight = 6,
                          .footer = kDetailsChangeFooter}),
      name_(AddField(Text(TextId::kSwitchNameLabel), kFieldWidth)),
      uplink_(Rows().Append(std::make_unique<UplinkRow>(
          "Uplink: ", uplinkChoices(), [none = Text(TextId::kNone)](const PnicRecord& pnic) {
            return pnic.name.empty() ? none : plainText(pnic.name);
          }))) {}

bool CreateXssDialog::Takes(int key) const {
  return Key::isPrintable(key);
}

void CreateXssDialog::ShowDetails() {
  if (!uplink_.Current()->name.empty()) uplink_.ShowDetails(*this);
}

bool CreateXssDialog::Accept() {
  const std::string name = name_.Value(), uplink = uplink_.Current()->name;
  if (!HostCtl::Network::isSwitchName(name) || isTaken(name))
    return Refuse(name_, TextId::kInvalidArgument, TextId::kEnterValidStandardSwitchName);
  if (!uplink.empty() && isUsedNow(uplink))
    return Refuse(uplink_, TextId::kInvalidArgument, TextId::kUplinkIsAlreadyInUse);
  announceOperation("evb.user.kiva.standard.switch.created", "Creating standard switch " + name);
  std::string trouble;
  if (!Create(name, uplink, trouble)) return showFailure(*this, trouble), false;
  showSuccess(*this, Text(TextId::kSuccessfullyCreatedStandardSwitch) + name);
  return true;
}

bool CreateXssDialog::Create(const std::string& name, const std::string& uplink,
                             std::string& trouble) {
  if (!AddStandardSwitch(name, &trouble)) return false;
  if (uplink.empty() || AddUplinkToStandardSwitch(name, uplink, &trouble)) return true;
  logInfo("Removing standard switch %s", name.c_str());
  std::string left;
  if (!RemoveStandardSwitch(name, &left))
    trouble += (trouble.empty() ? "" : "\n") + failureOf("Removing standard switch " + name, left);
  return false;
}

}  // namespace Kiva
