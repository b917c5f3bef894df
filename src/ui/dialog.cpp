// SPDX-License-Identifier: MIT
#include "ui/dialog.h"

#include <algorithm>

#include "ui/markup_text.h"

namespace Kiva {

namespace {

constexpr int kSideMargins = 6;

Rect centred(int width, int height) {
  return {(screenColumns() - width) / 2, (screenLines() - height) / 2, width, height};
}

}  // namespace

Dialog::Dialog(Frame& owner, int width, int height, int topHeight)
    : Frame(&owner, centred(width, height), kBlack, kWhite) {
  Erase();
  const int bottomHeight = height - topHeight;
  Window& top = Make<Window>(Rect{0, 0, width, topHeight}, kDarkGrey, kWhite);
  Window& bottom = Make<Window>(Rect{0, topHeight, width, bottomHeight}, kAmber, kWhite);
  DrawBox();
  const int textWidth = width - kSideMargins;
  title_ = &top.Make<TextArea>(Rect{3, 1, textWidth, 1}, kWhite);
  body_ = &top.Make<TextArea>(Rect{3, 3, textWidth, topHeight - 4}, kLightGrey);
  footer_ = &bottom.Make<TextArea>(Rect{2, bottomHeight - 2, width - 4, 1}, kBlack);
  if (bottomHeight - 4 >= 1)
    content_ = &bottom.Make<Window>(Rect{2, 1, width - 4, bottomHeight - 4}, kAmber, kDarkGrey);
}

void Dialog::SetActive(bool active) {
  if (active) RefreshOwners();
  Frame::SetActive(active);
}

int topHeightFor(const std::string& body, int width) {
  return std::max(5, countLines(body, width - kSideMargins) + 4);
}

int bottomHeightFor(int contentRows) {
  return contentRows > 0 ? contentRows + 4 : 3;
}

}  // namespace Kiva
