// SPDX-License-Identifier: MIT
#include "network/adapter_checks_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "network/adapter_info_dialog.h"
#include "ui/footer.h"

namespace Kiva {

namespace {

/// Where an item's label begins.
constexpr int kMarkColumns = 4;

}  // namespace

AdapterChecksDialog::AdapterChecksDialog(Frame& owner, TextId title, TextId text, Pnics pnics,
                                         std::size_t checked)
    : Dialog(owner, 78, 21, 7),
      title_(title),
      text_(text),
      pnics_(std::move(pnics)),
      checked_(checked) {
  Window& content = *Content();
  const int width = content.Width();
  content.Make<TextArea>(Rect{kMarkColumns, 0, width - kMarkColumns, 1}, kParentColor,
                         adapterHeading());
  items_ = &content.Make<ItemList>(Rect{0, 1, width, content.Height() - 1});
}

void AdapterChecksDialog::LayOut() {
  SetTitle(Text(title_));
  SetText(Text(text_));
  SetFooter(kDetailsToggleFooter);
  for (std::size_t i = 0; i < pnics_.size(); ++i)
    checks_.push_back(
        &items_->Append(std::make_unique<CheckItem>(adapterLine(pnics_[i]), i < checked_)));
  items_->FocusStart();
}

int AdapterChecksDialog::Foreground() {
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

void AdapterChecksDialog::Handle(int key) {
  if (!items_->Focused()) return;
  if (key == Key::kUp) items_->MoveUp();
  if (key == Key::kDown) items_->MoveDown();
  if (key == 'd' || key == 'D') ShowDetails();
  if (key != Key::kSpace) return;
  checks_[static_cast<std::size_t>(items_->FocusedIndex())]->Toggle();
  items_->Draw();
}

void AdapterChecksDialog::ShowDetails() {
  AdapterInfoDialog dialog(*this, pnics_[static_cast<std::size_t>(items_->FocusedIndex())]);
  runWindow(dialog);
}

bool AdapterChecksDialog::Accept() {
  Pnics chosen;
  for (std::size_t i = 0; i < pnics_.size(); ++i)
    if (checks_[i]->IsChecked()) chosen.push_back(pnics_[i]);
  if (!MayTake(chosen)) return false;
  selected_.clear();
  for (const auto& pnic : chosen) selected_.push_back(pnic.name);
  return true;
}

}  // namespace Kiva
