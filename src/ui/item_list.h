// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "core/window.h"
#include "ui/item.h"
#include "ui/text_area.h"

namespace Kiva {

/// A vertical list of items of which one has the focus, scrolled so that it stays in sight. Its
/// last column belongs to the scroll bar, which shows only when there are more items than rows. The
/// window that holds it decides which keys move the focus and which go to the focused item. It is
/// filled and focused once its window is in the foreground, because the focused item may take the
/// cursor.
class ItemList : public Window {
 public:
  ItemList(Window& parent, const Rect& place);

  template <typename Kind>
  Kind& Append(std::unique_ptr<Kind> item) {
    Kind& added = *item;
    items_.push_back(std::move(item));
    return added;
  }
  void Clear();

  /// Focus on the marked item, else on the first that can take it.
  void FocusStart();
  /// Focus on `item`, scrolled into view.
  void Focus(const Item& item);
  /// Focus on the next item below or above that can take it; nothing when there is none.
  void MoveDown();
  void MoveUp();

  /// Null when no item can take the focus.
  Item* Focused();
  /// Its index in the order of appending; meaningless when there is none.
  int FocusedIndex() const { return top_ + focusRow_; }

  /// Draws the visible items and the scroll bar, the focused item last so that the cursor ends in
  /// it.
  void Draw();

 private:
  int Count() const { return static_cast<int>(items_.size()); }
  int Rows() const { return static_cast<int>(rows_.size()); }
  void FocusIndex(int index);
  /// Moves the focus and draws what has changed.
  void MoveTo(int index);
  void DrawItem(int row);
  void DrawFocused();
  void DrawScrollBar();

  std::vector<std::unique_ptr<Item>> items_;
  std::vector<TextArea*> rows_;
  Window* scrollBar_ = nullptr;
  int top_ = 0;
  int focusRow_ = 0;
};

}  // namespace Kiva
