// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace Kiva {

/// The terminal that the program owns. One for the process; start-up fills it.
struct Terminal {
  /// Virtual terminal from the command line, -1 without one.
  int vtNumber = -1;
  /// An operator sits at the machine: the keyboard layout is theirs to choose.
  bool onLocalConsole = false;
  bool monochrome = false;
};

Terminal& terminal();

/// True when descriptor 1 is a Linux console.
bool isLinuxConsole();

/// The number of a virtual terminal, 1 to 63, from an argument; text behind the digits is ignored.
std::optional<int> parseVirtualTerminal(const char* text);

/// What TERM becomes, and whether an operator sits at the machine.
struct TerminalType {
  std::string term;
  bool onLocalConsole = false;
  bool operator==(const TerminalType&) const = default;
};

/// The terminal's type from what start-up knows; null stands for a variable that is not set.
TerminalType chooseTerminalType(bool linuxConsole, const char* term, const char* sshClient);

/// Sets TERM and TERMINFO for curses and notes onLocalConsole.
void prepareTerminalType();
/// A type that curses cannot drive is logged and becomes "vt102". Called once the log is open.
void replaceUnusableTerminalType();

/// Keeps the attributes of descriptor 1 as they were before curses.
void saveTerminalAttributes();
/// Puts those attributes back, at once.
void restoreTerminalAttributes();

/// Brings virtual terminal `number` to the front; does nothing where there is no console to ask.
void switchToVirtualTerminal(int number);

/// Switches to the terminal from the command line, if any, and keeps the suspend key from stopping
/// the program there.
void takeVirtualTerminal();

}  // namespace Kiva
