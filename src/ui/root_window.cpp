// SPDX-License-Identifier: MIT
#include "ui/root_window.h"

#include <algorithm>

#include "core/log.h"
#include "ui/utf8.h"

namespace Kiva {

namespace {

constexpr int kFirstRow = 4;

}  // namespace

RootWindow::RootWindow(Frame& owner) : Frame(&owner, screenRect(), kBlack, kWhite) {
  const int lines = screenLines();
  const int columns = screenColumns();
  Window& main = Make<Window>(Rect{0, 0, columns, lines - 1}, kLightGrey, kWhite);
  statusLine_ = &Make<Window>(Rect{0, lines - 1, columns, 1}, kBlack, kLightGrey);
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
  Window& left = main.Make<Window>(Rect{0, 0, half, height}, kAmber, kWhite);
  Window& right = main.Make<Window>(Rect{half, 0, half, height}, kDarkGrey, kWhite);
  menu_ = &left.Make<ItemList>(Rect{2, kFirstRow, half - 2, textRows});
  rightText_ = &right.Make<TextArea>(Rect{2, kFirstRow, half - 4, textRows}, kLightGrey);
  leftTitle_ = &left.Make<TextArea>(Rect{3, 1, half - 6, 1}, kBlack);
  rightTitle_ = &right.Make<TextArea>(Rect{2, 1, half - 4, 1}, kWhite);
  leftFooter_ = &left.Make<TextArea>(Rect{2, footerRow, half - 3, 1}, kBlack);
  rightFooter_ = &right.Make<TextArea>(Rect{1, footerRow, half - 3, 1}, kWhite);
}

void RootWindow::Show() {
  SetActive(true);
  const std::string banner = Text(TextId::kProductBanner);
  const int start = std::max(0, (statusLine_->Width() - columnCount(banner)) / 2);
  statusLine_->Print(start, 0, std::string(firstColumns(banner, statusLine_->Width())));
  Repaint();
  Refresh();
}

}  // namespace Kiva
