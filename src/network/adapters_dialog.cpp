// SPDX-License-Identifier: MIT
#include "network/adapters_dialog.h"

#include <algorithm>

#include "core/keys.h"
#include "network/adapter_info_dialog.h"
#include "network/adapter_users.h"
#include "network/used_adapters_dialog.h"

namespace Kiva {

namespace {

/// Where an item's label begins.
constexpr int kMarkColumns = 4;

}  // namespace

AdaptersDialog::AdaptersDialog(Frame& owner, std::string switchName,
                               std::vector<std::string> selected)
    : ListDialog(owner, {.title = TextId::kNetworkAdaptersTitle,
                         .text = TextId::kSelectAdapters,
                         .width = 78,
                         .height = 21,
                         .topHeight = 7,
                         .footer = kDetailsToggleFooter,
                         .headingRows = 1}),
      selected_(std::move(selected)),
      pnics_(ordered(readPnics().value_or(Pnics()), selected_)),
      switchName_(std::move(switchName)) {
  Content()->Make<TextArea>(Rect{kMarkColumns, 0, Content()->Width() - kMarkColumns, 1},
                            kParentColor, adapterHeading());
  for (std::size_t i = 0; i < pnics_.size(); ++i)
    checks_.push_back(
        &Rows().Append(std::make_unique<CheckItem>(adapterLine(pnics_[i]), i < selected_.size())));
}

void AdaptersDialog::PressKey(int key) {
  if (key == 'd' || key == 'D') ShowDetails();
  if (key != Key::kSpace) return;
  checks_[static_cast<std::size_t>(Rows().FocusedIndex())]->Toggle();
  Rows().Draw();
}

void AdaptersDialog::ShowDetails() {
  AdapterInfoDialog dialog(*this, pnics_[static_cast<std::size_t>(Rows().FocusedIndex())]);
  runWindow(dialog);
}

bool AdaptersDialog::Accept() {
  Pnics chosen;
  for (std::size_t i = 0; i < pnics_.size(); ++i)
    if (checks_[i]->IsChecked()) chosen.push_back(pnics_[i]);
  if (IsUsedElsewhere(chosen) && !MayTakeUsed()) return false;
  selected_.clear();
  for (const auto& pnic : chosen) selected_.push_back(pnic.name);
  return true;
}

bool AdaptersDialog::MayTakeUsed() {
  UsedAdaptersDialog dialog(*this);
  return runWindow(dialog) != 0;
}

bool AdaptersDialog::IsUsedElsewhere(const Pnics& pnics) const {
  const auto users = findAdapterUsers(pnics).value_or(std::vector<AdapterUser>());
  return std::any_of(users.begin(), users.end(),
                     [&](const AdapterUser& user) { return user.switchName != switchName_; });
}

}  // namespace Kiva
