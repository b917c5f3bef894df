// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// The screen as a whole: where curses starts and ends, and where what windows drew is sent to the
/// terminal. Windows only prepare their changes; updateScreen sends them in one go, so that one key
/// costs one write. The key wait calls it; whoever is about to block for another reason calls it
/// first.

/// Starts curses on the terminal with the console's colours and keys. Every exit restores the
/// terminal from then on.
void startScreen();
/// Clears the screen, leaves curses and gives a Linux console its own palette back.
void endScreen();

/// Leaves curses unless it was left already; also runs at exit.
void leaveScreen();

void updateScreen();
/// Makes the next update repaint every cell, whatever the terminal is believed to show.
void repaintScreen();
/// Clears the terminal for another program, cursor shown; resumeScreen comes back from it and has
/// the next update repaint everything.
void suspendScreen();
void resumeScreen();
/// Drops the keys that were typed and not read yet.
void discardTypeAhead();

/// While it lives, a lone Escape is told from a key's sequence within 25 milliseconds on every
/// terminal: for screens that have no other key, and whose Escape shall be seen at once.
class QuickEscape {
 public:
  QuickEscape();
  ~QuickEscape();
  QuickEscape(const QuickEscape&) = delete;
  QuickEscape& operator=(const QuickEscape&) = delete;

 private:
  const int before_;
};

int screenColumns();
int screenLines();

/// The one cursor of the terminal, in screen cells. Windows change it through their own operations.
struct Cursor {
  bool visible = false;
  int column = 0;
  int row = 0;
  bool operator==(const Cursor&) const = default;
};

Cursor& cursor();

}  // namespace Kiva
