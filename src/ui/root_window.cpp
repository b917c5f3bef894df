// SPDX-License-Identifier: MIT
#include "ui/root_window.h"

#include <algorithm>
#include <string_view>

#include "core/log.h"

namespace Kiva {

namespace {

constexpr int kFirstRow = 4;

Rect screen() {
  return {0, 0, screenColumns(), screenLines()};
}

TextArea& addText(Window& pane, const Rect& place, Color foreground) {
  return pane.Add(std::make_unique<TextArea>(pane, place, foreground));
}

Window& addWindow(Window& parent, const Rect& place, Color background, Color foreground) {
  return parent.Add(std::make_unique<Window>(parent, place, background, foreground));
}

}  // namespace

RootWindow::RootWindow(Window& owner) : Frame(&owner, screen(), kBlack, kWhite) {
  const int lines = screenLines();
  const int columns = screenColumns();
  Window& main = addWindow(*this, {0, 0, columns, lines - 1}, kLightGrey, kWhite);
  statusLine_ = &addWindow(*this, {0, lines - 1, columns, 1}, kBlack, kLightGrey);
  AddPanes(main);
  main.DrawBox();
  main.DrawHorizontalLine(1, 2, main.Width() - 2);
  logInfo("COLS=%d, LINES=%d", columns, lines);
}

// The last row of text is the one above the footers.
void RootWindow::AddPanes(Window& main) {
  const int half = screenColumns() / 2;
  const int footerRow = screenLines() - 3;
  const int textRows = std::max(1, footerRow - kFirstRow);
  const int height = screenLines() - 1;
  Window& left = addWindow(main, {0, 0, half, height}, kAmber, kWhite);
  Window& right = addWindow(main, {half, 0, half, height}, kDarkGrey, kWhite);
  menu_ = &left.Add(std::make_unique<ItemList>(left, Rect{2, kFirstRow, half - 2, textRows}));
  rightText_ = &addText(right, {2, kFirstRow, half - 4, textRows}, kLightGrey);
  leftTitle_ = &addText(left, {3, 1, half - 6, 1}, kBlack);
  rightTitle_ = &addText(right, {2, 1, half - 6, 1}, kWhite);
  leftFooter_ = &addText(left, {2, footerRow, half - 3, 1}, kBlack);
  rightFooter_ = &addText(right, {1, footerRow, half - 3, 1}, kWhite);
}

void RootWindow::Show() {
  SetActive(true);
  const std::string banner = Text(TextId::kProductBanner);
  const int length = static_cast<int>(banner.size());
  const int start = std::max(0, (statusLine_->Width() - length) / 2);
  statusLine_->Print(start, 0, banner.substr(0, static_cast<size_t>(statusLine_->Width())));
  Repaint();
  Refresh();
}

}  // namespace Kiva
