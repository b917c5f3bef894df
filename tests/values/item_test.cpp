// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "ui/carousel_item.h"
#include "ui/message_dialog.h"

namespace Kiva {
namespace {

struct NoDetails {
  NoDetails(Frame&, int);
};

TEST(CarouselRadioItem, GoesRoundItsEntries) {
  CarouselRadioItem<int, NoDetails> item("Uplink", {1, 2, 3},
                                         [](int entry) { return "pnic" + std::to_string(entry); });
  EXPECT_EQ(item.Label(), "Uplink < pnic1 >");
  for (const auto& [key, current] :
       {std::pair{Key::kLeft, 3}, {Key::kRight, 1}, {Key::kRight, 2}, {Key::kSpace, 2}}) {
    item.PressKey(key);
    EXPECT_EQ(item.Current(), current);
  }
  EXPECT_EQ(item.Label(), "Uplink < pnic2 >");
}

}  // namespace
}  // namespace Kiva
