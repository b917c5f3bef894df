// SPDX-License-Identifier: MIT
#include "network/adapter_checks_dialog.h"

#include "core/keys.h"
#include "network/adapter_info_dialog.h"

namespace Kiva {

namespace {

/// Where an item's label begins.
constexpr int kMarkColumns = 4;

}  // namespace

AdapterChecksDialog::AdapterChecksDialog(Frame& owner, TextId title, TextId text, Pnics pnics,
                                         std::size_t checked)
    : ListDialog(owner, {.title = title,
                         .text = text,
                         .width = 78,
                         .height = 21,
                         .topHeight = 7,
                         .footer = kDetailsToggleFooter,
                         .headingRows = 1}),
      pnics_(std::move(pnics)) {
  Content()->Make<TextArea>(Rect{kMarkColumns, 0, Content()->Width() - kMarkColumns, 1},
                            kParentColor, adapterHeading());
  for (std::size_t i = 0; i < pnics_.size(); ++i)
    checks_.push_back(
        &Rows().Append(std::make_unique<CheckItem>(adapterLine(pnics_[i]), i < checked)));
}

void AdapterChecksDialog::PressKey(int key) {
  if (key == 'd' || key == 'D') ShowDetails();
  if (key != Key::kSpace) return;
  checks_[static_cast<std::size_t>(Rows().FocusedIndex())]->Toggle();
  Rows().Draw();
}

void AdapterChecksDialog::ShowDetails() {
  AdapterInfoDialog dialog(*this, pnics_[static_cast<std::size_t>(Rows().FocusedIndex())]);
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
