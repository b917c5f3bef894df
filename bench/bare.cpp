// SPDX-License-Identifier: MIT
// The measure of the benchmarks: what a curses program costs that does nothing but show one screen
// of text in a console's colours and move a highlight. Quits with "q" and when its terminal is
// gone.
#include <curses.h>

#include <clocale>
#include <cstdlib>

namespace {

constexpr int kEntries = 12;
constexpr int kAmber = 3;
constexpr int kDarkGrey = 6;

void setUpColours() {
  use_default_colors();
  if (!can_change_color()) return;
  init_color(kAmber, 1000, 800, 0);
  init_color(kDarkGrey, 334, 334, 334);
  init_pair(1, COLOR_BLACK, kAmber);
  init_pair(2, COLOR_WHITE, COLOR_BLACK);
  init_pair(3, COLOR_WHITE, kDarkGrey);
}

void drawEntry(int entry, bool isChosen) {
  attrset(isChosen ? COLOR_PAIR(2) | (can_change_color() ? 0 : A_STANDOUT) : COLOR_PAIR(1));
  mvprintw(5 + entry, 2, "Entry number %-23d", entry + 1);
}

void drawScreen() {
  for (int row = 0; row < LINES - 1; ++row) {
    for (int column = 0; column < COLS; ++column) {
      mvaddch(row, column, ' ' | COLOR_PAIR(column < COLS / 2 ? 1 : 3));
    }
  }
  attrset(COLOR_PAIR(3));
  for (int row = 5; row < LINES - 4; ++row) mvprintw(row, COLS / 2 + 2, "What this entry is for");
  attrset(COLOR_PAIR(1));
  box(stdscr, 0, 0);
  for (int entry = 0; entry < kEntries; ++entry) drawEntry(entry, entry == 0);
}

}  // namespace

int main() {
  std::setlocale(LC_ALL, "C.UTF-8");
  initscr();
  start_color();
  curs_set(0);
  cbreak();
  noecho();
  keypad(stdscr, TRUE);
  setUpColours();
  drawScreen();
  int chosen = 0;
  for (int key = 0; key != 'q' && key != ERR; key = getch()) {
    if (key == KEY_UP || key == KEY_DOWN) {
      drawEntry(chosen, false);
      chosen = (chosen + (key == KEY_DOWN ? 1 : kEntries - 1)) % kEntries;
      drawEntry(chosen, true);
    }
    refresh();
  }
  endwin();
  return EXIT_SUCCESS;
}
