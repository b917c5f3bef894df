// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/keys.h"
#include "ui/frame.h"
#include "ui/item.h"

namespace Kiva {

/// A choice among entries of which it shows one at a time: Left and Right go through them, round
/// the ends. Its dialog shows the current entry's details on D, in a `Details` dialog made of it.
template <typename Entry, typename Details>
class CarouselRadioItem : public LabelItem {
 public:
  /// `nameOf` tells what is shown of an entry. There is at least one entry.
  CarouselRadioItem(std::string label, std::vector<Entry> entries,
                    std::function<std::string(const Entry&)> nameOf)
      : LabelItem("", Selectable::Yes),
        title_(std::move(label)),
        entries_(std::move(entries)),
        nameOf_(std::move(nameOf)) {
    Turn(0);
  }

  const Entry& Current() const { return entries_[current_]; }

  void PressKey(int key) override {
    if (key == Key::kRight) Turn(1);
    if (key == Key::kLeft) Turn(entries_.size() - 1);
  }

  void ShowDetails(Frame& owner) const {
    Details dialog(owner, Current());
    runWindow(dialog);
  }

 private:
  void Turn(std::size_t steps) {
    current_ = (current_ + steps) % entries_.size();
    SetLabel(title_ + " < " + nameOf_(Current()) + " >");
  }

  std::string title_;
  std::vector<Entry> entries_;
  std::function<std::string(const Entry&)> nameOf_;
  std::size_t current_ = 0;
};

}  // namespace Kiva
