// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/keys.h"
#include "ui/frame.h"
#include "ui/item.h"
#include "ui/text_area.h"
#include "ui/utf8.h"

namespace Kiva {

/// A choice among entries of which it shows one at a time: Left and Right go through them, round
/// the ends. Its dialog shows the current entry's details on D, in a `Details` dialog made of it.
/// Without any entry there is nothing to choose, and nothing to show.
template <typename Entry, typename Details>
class CarouselRadioItem : public LabelItem {
 public:
  /// `nameOf` tells what is shown of an entry.
  CarouselRadioItem(std::string label, std::vector<Entry> entries,
                    std::function<std::string(const Entry&)> nameOf)
      : LabelItem("", Selectable::Yes),
        title_(std::move(label)),
        entries_(std::move(entries)),
        nameOf_(std::move(nameOf)) {}

  const std::vector<Entry>& Entries() const { return entries_; }
  /// Null where there is none.
  Entry* Current() { return entries_.empty() ? nullptr : &entries_[current_]; }
  /// Shows the entry with that index.
  void Show(std::size_t index) { current_ = index; }

  /// What is shown in so many columns: a name without room for the whole of it ends in "(...)".
  std::string Line(int columns) {
    constexpr const char *kBefore = "< ", *kBehind = " >";
    if (!Current()) return title_;
    const int room = columns - columnCount(title_ + kBefore + kBehind);
    return title_ + kBefore + cut(repairedUtf8(nameOf_(*Current())), room) + kBehind;
  }

  void Draw(TextArea& row) override { row.SetText(Line(row.Width())); }

  void PressKey(int key) override {
    if (key == Key::kRight) Turn(1);
    if (key == Key::kLeft) Turn(entries_.size() - 1);
  }

  void ShowDetails(Frame& owner) {
    if (entries_.empty()) return;
    Details dialog(owner, *Current());
    runWindow(dialog);
  }

 private:
  void Turn(std::size_t steps) {
    if (!entries_.empty()) current_ = (current_ + steps) % entries_.size();
  }

  std::string title_;
  std::vector<Entry> entries_;
  std::function<std::string(const Entry&)> nameOf_;
  std::size_t current_ = 0;
};

}  // namespace Kiva
