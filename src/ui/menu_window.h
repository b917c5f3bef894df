// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "core/key_wait.h"
#include "core/keys.h"
#include "ui/root_window.h"

namespace Kiva {

/// One row of a MenuWindow: everything that its keys, its pane and its footer need. The functions
/// are those of the window W that shows it.
template <typename W>
struct MenuEntry {
  TextId title;
  TextId description = TextId::kEmpty;
  const char* footer = "";
  /// Null: always.
  bool (W::*listed)() = nullptr;
  bool (W::*selectable)() = nullptr;
  /// The row in the list; null: the title.
  TextId (W::*label)() = nullptr;
  /// The pane's text; null: the description alone.
  std::string (W::*text)() = nullptr;
  /// Enter; null: nothing.
  void (W::*enter)() = nullptr;
};

/// What the entries of one menu have in common.
struct MenuLook {
  TextId title;
  const char* leftFooter;
  /// What Escape does, at the end of every right footer.
  const char* wayOut;
};

/// A full-screen window that is a table of entries: the list on the left, what the selected entry
/// is about on the right. Enter does what the entry's row says, Escape ends the window unless W
/// objects. W derives from it and hands its table to AddEntries once it is complete itself.
template <typename W>
class MenuWindow : public RootWindow {
 public:
  /// 1 when the operator leaves.
  int Foreground() override {
    Menu().FocusStart();
    Show();
    for (;;) {
      const int key = getKey(*this);
      if (key != Key::kEscape)
        Handle(key);
      else if (MayClose())
        return 1;
    }
  }

  void Repaint() override {
    SetLeftTitle(Text(look_.title));
    for (std::size_t row = 0; row < entries_.size(); ++row) labels_[row]->SetLabel(LabelOf(row));
    Menu().Draw();
    SetLeftFooter(look_.leftFooter);
    RepaintRight();
  }

 protected:
  using Entry = MenuEntry<W>;

  MenuWindow(Frame& owner, const MenuLook& look) : RootWindow(owner), look_(look) {}

  /// `entries` outlive the window.
  void AddEntries(const std::vector<Entry>& entries) {
    for (const Entry& entry : entries) {
      if (entry.listed && !(Self().*entry.listed)()) continue;
      entries_.push_back(&entry);
      labels_.push_back(&Menu().Append(
          std::make_unique<LabelItem>(LabelOf(entries_.size() - 1), SelectableOf(entry))));
    }
  }

  /// Asks anew which entries can be selected; the selected one must be among them.
  void UpdateSelectable() {
    for (std::size_t row = 0; row < entries_.size(); ++row)
      labels_[row]->SetSelectable(SelectableOf(*entries_[row]));
  }

  const Entry& Selected() { return *entries_[static_cast<std::size_t>(Menu().FocusedIndex())]; }
  bool IsSelected(TextId title) { return Selected().title == title; }

  std::string Description() {
    return std::string("{color:light-grey}") + Text(Selected().description) + "{/color}";
  }

  void RepaintRight() {
    const Entry& entry = Selected();
    SetRightTitle(Text(entry.title));
    SetRightText(entry.text ? (Self().*entry.text)() : Description());
    SetRightFooter(std::string(entry.footer) + look_.wayOut);
  }

  /// The selection is about to leave its entry.
  virtual void Leave() {}
  /// Whether Escape ends the window.
  virtual bool MayClose() { return true; }
  /// A key that means nothing to the menu itself.
  virtual void HandleOther(int) {}

 private:
  W& Self() { return static_cast<W&>(*this); }

  Selectable SelectableOf(const Entry& entry) {
    return !entry.selectable || (Self().*entry.selectable)() ? Selectable::Yes : Selectable::No;
  }

  std::string LabelOf(std::size_t row) {
    const Entry& entry = *entries_[row];
    return Text(entry.label ? (Self().*entry.label)() : entry.title);
  }

  void Handle(int key) {
    if (key == Key::kUp || key == Key::kDown)
      Move(key);
    else if (key != Key::kEnter)
      HandleOther(key);
    else if (Selected().enter)
      (Self().*Selected().enter)();
  }

  void Move(int key) {
    Leave();
    if (key == Key::kDown)
      Menu().MoveDown();
    else
      Menu().MoveUp();
    RepaintRight();
  }

  const MenuLook look_;
  std::vector<const Entry*> entries_;
  std::vector<LabelItem*> labels_;
};

}  // namespace Kiva
