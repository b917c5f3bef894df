// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva::Key {

/// Key codes as the key wait returns them: bytes, and curses' codes for the rest.
inline constexpr int kTab = 9;
inline constexpr int kEnter = 10;
inline constexpr int kEscape = 27;
inline constexpr int kSpace = 32;
inline constexpr int kBackspaceByte = 8;
inline constexpr int kDown = 258;
inline constexpr int kUp = 259;
inline constexpr int kLeft = 260;
inline constexpr int kRight = 261;
inline constexpr int kHome = 262;
inline constexpr int kBackspace = 263;
inline constexpr int kDelete = 330;
inline constexpr int kInsert = 331;
inline constexpr int kPageDown = 338;
inline constexpr int kPageUp = 339;
inline constexpr int kKeypadEnter = 343;
inline constexpr int kEnd = 360;
inline constexpr int kResize = 410;

constexpr int function(int number) {
  return 264 + number;
}
inline constexpr int kF2 = function(2);
inline constexpr int kF3 = function(3);
inline constexpr int kF4 = function(4);
inline constexpr int kF11 = function(11);
inline constexpr int kF12 = function(12);

/// Keys that move within a text field or take from it.
constexpr bool isEditing(int key) {
  return key == kBackspaceByte || key == kBackspace || key == kDelete || key == kLeft ||
         key == kRight || key == kHome || key == kEnd;
}

/// What a text field takes as it is.
constexpr bool isPrintable(int key) {
  return key >= 32 && key <= 126;
}
/// What a field that hides its text takes: a password may hold any character.
constexpr bool isByte(int key) {
  return isPrintable(key) || (key >= 128 && key <= 255);
}

/// What fields for numbers and for names take.
constexpr bool isDigit(int key) {
  return key >= '0' && key <= '9';
}
constexpr bool isLetter(int key) {
  return (key >= 'a' && key <= 'z') || (key >= 'A' && key <= 'Z');
}

}  // namespace Kiva::Key

namespace Kiva {

/// Teaches curses the escape sequences of the consoles and terminals in use, whatever the
/// terminal's own description says. Called once, by startScreen.
void defineKeys();

}  // namespace Kiva
