// SPDX-License-Identifier: MIT
#include "network/adapters_dialog.h"

#include <algorithm>

#include "core/key_wait.h"
#include "core/keys.h"
#include "network/adapter_info_dialog.h"
#include "network/adapter_users.h"
#include "network/used_adapters_dialog.h"
#include "ui/footer.h"

namespace Kiva {

namespace {

/// Where an item's label begins.
constexpr int kMarkColumns = 4;

}  // namespace

AdaptersDialog::AdaptersDialog(Frame& owner, std::string switchName,
                               std::vector<std::string> selected)
    : Dialog(owner, 78, 21, 7),
      selected_(std::move(selected)),
      pnics_(ordered(readPnics().value_or(Pnics()), selected_)),
      switchName_(std::move(switchName)) {
  Window& content = *Content();
  const int width = content.Width();
  content.Make<TextArea>(Rect{kMarkColumns, 0, width - kMarkColumns, 1}, kParentColor,
                         adapterHeading());
  items_ = &content.Make<ItemList>(Rect{0, 1, width, content.Height() - 1});
}

void AdaptersDialog::LayOut() {
  SetTitle(Text(TextId::kNetworkAdaptersTitle));
  SetText(Text(TextId::kSelectAdapters));
  SetFooter(kDetailsToggleFooter);
  for (std::size_t i = 0; i < pnics_.size(); ++i)
    checks_.push_back(
        &items_->Append(std::make_unique<CheckItem>(adapterLine(pnics_[i]), i < selected_.size())));
  items_->FocusStart();
}

int AdaptersDialog::Foreground() {
  LayOut();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    if (key != Key::kEnter)
      Handle(key);
    else if (Accept())
      return 1;
  }
}

void AdaptersDialog::Handle(int key) {
  if (!items_->Focused()) return;
  if (key == Key::kUp) items_->MoveUp();
  if (key == Key::kDown) items_->MoveDown();
  if (key == 'd' || key == 'D') ShowDetails();
  if (key != Key::kSpace) return;
  checks_[static_cast<std::size_t>(items_->FocusedIndex())]->Toggle();
  items_->Draw();
}

void AdaptersDialog::ShowDetails() {
  AdapterInfoDialog dialog(*this, pnics_[static_cast<std::size_t>(items_->FocusedIndex())]);
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
