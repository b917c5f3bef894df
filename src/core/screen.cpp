// SPDX-License-Identifier: MIT
#include "core/screen.h"

#include <curses.h>
#include <term.h>
#include <termios.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <cstring>

#include "core/keys.h"
#include "core/palette.h"
#include "core/terminal.h"

namespace Kiva {

namespace {

constexpr int kQuickEscapeDelay = 25;

// On a Linux console a key's bytes come whole, so Escape need not wait for more; elsewhere an
// operator may type Escape and then a digit by hand, and the default second stays.
void setEscapeDelay() {
  const char* term = std::getenv("TERM");
  if (term && std::strcmp(term, "linux") == 0) set_escdelay(kQuickEscapeDelay);
}

// Ctrl-S at the machine would stop the screen, and the program with it, until somebody thinks of
// Ctrl-Q. A serial line may need both.
void switchFlowControlOff() {
  termios attributes{};
  if (!isLinuxConsole() || tcgetattr(STDIN_FILENO, &attributes) != 0) return;
  attributes.c_iflag &= ~static_cast<tcflag_t>(IXON);
  tcsetattr(STDIN_FILENO, TCSANOW, &attributes);
  def_prog_mode();
}

void setLocale() {
  if (!std::setlocale(LC_ALL, "en_US.UTF-8")) std::setlocale(LC_ALL, "C.UTF-8");
}

}  // namespace

void startScreen() {
  setLocale();
  setEscapeDelay();
  // The terminal knows its size better than variables that a shell left behind.
  use_env(FALSE);
  use_tioctl(TRUE);
  initscr();
  start_color();
  std::atexit(leaveScreen);
  curs_set(0);
  cbreak();
  noecho();
  switchFlowControlOff();
  keypad(stdscr, TRUE);
  setUpColors();
  defineKeys();
  refresh();
}

void leaveScreen() {
  if (stdscr && !isendwin()) endwin();
}

void endScreen() {
  erase();
  refresh();
  endwin();
  constexpr char kResetPalette[] = {'\033', ']', 'R'};
  if (write(STDOUT_FILENO, kResetPalette, sizeof kResetPalette) < 0) return;
}

void updateScreen() {
  static bool shown = false;
  if (cursor().visible != shown) {
    shown = cursor().visible;
    curs_set(shown ? 1 : 0);
  }
  if (shown) wmove(newscr, cursor().row, cursor().column);
  doupdate();
}

void repaintScreen() {
  clearok(curscr, TRUE);
}

void suspendScreen() {
  wclear(newscr);
  cursor() = {.visible = true};
  updateScreen();
}

void resumeScreen() {
  // The other program may have left the alternate screen, and the keypad's mode, behind.
  if (enter_ca_mode) putp(enter_ca_mode);
  keypad(stdscr, FALSE);
  keypad(stdscr, TRUE);
  cursor() = {};
  repaintScreen();
}

void discardTypeAhead() {
  flushinp();
}

QuickEscape::QuickEscape() : before_(get_escdelay()) {
  set_escdelay(kQuickEscapeDelay);
}

QuickEscape::~QuickEscape() {
  set_escdelay(before_);
}

int screenColumns() {
  return COLS;
}
int screenLines() {
  return LINES;
}

Cursor& cursor() {
  static Cursor one;
  return one;
}

}  // namespace Kiva
