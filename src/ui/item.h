// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/palette.h"

namespace Kiva {

class TextArea;

/// Whether the operator can move onto an item. Disabled items stay in sight.
enum class Selectable { Yes, No };

/// One line of an ItemList. The list owns its items, gives each the row to draw itself into, and
/// tells it whether it has the focus.
class Item {
 public:
  explicit Item(Selectable selectable) : selectable_(selectable) {}
  virtual ~Item() = default;

  virtual void Draw(TextArea& row) = 0;
  /// A key for the item while it has the focus.
  virtual void PressKey(int) {}
  /// True when the item shows the terminal's cursor while it has the focus.
  virtual bool ShowsCursor() const { return false; }
  /// True when the focus should start here.
  virtual bool IsMarked() const { return false; }

  bool IsShown() const { return shown_; }
  bool IsSelectable() const { return selectable_ == Selectable::Yes; }
  bool CanTakeFocus() const { return IsShown() && IsSelectable(); }
  bool IsFocused() const { return focused_; }
  void SetShown(bool shown) { shown_ = shown; }
  void SetSelectable(Selectable selectable) { selectable_ = selectable; }
  void SetFocused(bool focused) { focused_ = focused; }

  Color BackgroundColor() const { return kAmber; }
  Color ForegroundColor() const { return IsSelectable() ? kBlack : kDarkGrey; }

 private:
  Selectable selectable_;
  bool shown_ = true;
  bool focused_ = false;
};

/// A line of text: a menu entry, or a heading when it is not selectable.
class LabelItem : public Item {
 public:
  explicit LabelItem(std::string label, Selectable selectable = Selectable::No,
                     int indentation = 0);

  void Draw(TextArea& row) override;
  const std::string& Label() const { return label_; }
  void SetLabel(std::string label) { label_ = std::move(label); }

 protected:
  /// What stands between the indentation and the label.
  virtual std::string Mark() const { return ""; }

 private:
  std::string label_;
  int indentation_;
};

/// A choice that is on or off by itself.
class CheckItem : public LabelItem {
 public:
  explicit CheckItem(std::string label, bool checked = false, int indentation = 0);

  bool IsChecked() const { return checked_; }
  void SetChecked(bool checked) { checked_ = checked; }
  void Toggle() { checked_ = !checked_; }

 protected:
  std::string Mark() const override { return checked_ ? "[X] " : "[ ] "; }

 private:
  bool checked_;
};

/// One of several choices of which one is selected; its dialog clears the others.
class RadioItem : public LabelItem {
 public:
  explicit RadioItem(std::string label, bool selected = false, int indentation = 0);

  bool IsSelected() const { return selected_; }
  void SetSelected(bool selected) { selected_ = selected; }
  bool IsMarked() const override { return selected_; }

 protected:
  std::string Mark() const override { return selected_ ? "(o) " : "( ) "; }

 private:
  bool selected_;
};

}  // namespace Kiva
