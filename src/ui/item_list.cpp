// SPDX-License-Identifier: MIT
#include "ui/item_list.h"

#include <algorithm>

namespace Kiva {

ItemList::ItemList(Window& parent, const Rect& place)
    : Window(parent, place, kParentColor, kBlack) {
  for (int row = 0; row < Height(); ++row)
    rows_.push_back(&Make<TextArea>(Rect{0, row, Width() - 1, 1}, kParentColor));
  scrollBar_ = &Make<Window>(Rect{Width() - 1, 0, 1, Height()}, kParentColor, kParentColor);
}

void ItemList::Clear() {
  items_.clear();
  top_ = focusRow_ = 0;
}

void ItemList::FocusStart() {
  const auto marked = std::find_if(items_.begin(), items_.end(), [](const auto& item) {
    return item->CanTakeFocus() && item->IsMarked();
  });
  const auto first = std::find_if(items_.begin(), items_.end(),
                                  [](const auto& item) { return item->CanTakeFocus(); });
  const auto start = marked != items_.end() ? marked : first;
  if (start != items_.end()) FocusIndex(static_cast<int>(start - items_.begin()));
  Draw();
}

void ItemList::Focus(const Item& item) {
  for (int index = 0; index < Count(); ++index)
    if (items_[static_cast<size_t>(index)].get() == &item) FocusIndex(index);
  Draw();
}

void ItemList::MoveDown() {
  for (int index = FocusedIndex() + 1; index < Count(); ++index)
    if (items_[static_cast<size_t>(index)]->CanTakeFocus()) return MoveTo(index);
}

void ItemList::MoveUp() {
  for (int index = FocusedIndex() - 1; index >= 0; --index)
    if (items_[static_cast<size_t>(index)]->CanTakeFocus()) return MoveTo(index);
}

void ItemList::FocusIndex(int index) {
  if (index < top_) top_ = index;
  if (index >= top_ + Rows()) top_ = std::max(0, index - Rows() + 1);
  focusRow_ = index - top_;
}

void ItemList::MoveTo(int index) {
  const int topBefore = top_;
  const int rowBefore = focusRow_;
  FocusIndex(index);
  if (top_ != topBefore) return Draw();
  DrawItem(rowBefore);
  DrawFocused();
}

Item* ItemList::Focused() {
  if (FocusedIndex() >= Count()) return nullptr;
  Item& item = *items_[static_cast<size_t>(FocusedIndex())];
  return item.CanTakeFocus() ? &item : nullptr;
}

void ItemList::Draw() {
  for (int row = 0; row < Rows(); ++row)
    if (row != focusRow_) DrawItem(row);
  DrawScrollBar();
  Refresh();
  DrawFocused();
}

void ItemList::DrawFocused() {
  DrawItem(focusRow_);
  Item* focused = Focused();
  const bool drawn = IsActive() && focusRow_ >= 0 && focusRow_ < Rows();
  SetCursorVisible(drawn && focused && focused->ShowsCursor());
}

void ItemList::DrawItem(int row) {
  if (row < 0 || row >= Rows()) return;
  TextArea& area = *rows_[static_cast<size_t>(row)];
  if (top_ + row >= Count()) {
    area.SetColors(kParentColor, kParentColor);
    area.SetText("");
    return;
  }
  Item& item = *items_[static_cast<size_t>(top_ + row)];
  item.SetFocused(row == focusRow_ && item.CanTakeFocus());
  if (item.IsFocused())
    area.SetColors(kBlack, kWhite);
  else
    area.SetColors(item.BackgroundColor(), item.ForegroundColor());
  if (item.IsShown())
    item.Draw(area);
  else
    area.SetText("");
}

void ItemList::DrawScrollBar() {
  if (Count() <= Rows()) return scrollBar_->Erase();
  const int percentage = top_ * 100 / (Count() - Rows());
  const int thumb = (Rows() - 1) * percentage / 100;
  for (int row = 0; row < Rows(); ++row) scrollBar_->Print(0, row, row == thumb ? "█" : "▓");
}

}  // namespace Kiva
