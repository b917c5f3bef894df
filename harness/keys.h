// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace Harness {

/// The families of byte sequences in which terminals send their keys.
enum class KeyFamily {
  kXterm,          ///< "ESC O P" to "ESC O S", "ESC [ 1 5 ~", cursor keys "ESC O A"
  kLinuxConsole,   ///< "ESC [ [ A" to "ESC [ [ E", "ESC [ 1 7 ~", cursor keys "ESC [ A"
  kVt220,          ///< "ESC [ 1 1 ~" to "ESC [ 2 4 ~"
  kVt100,          ///< "ESC O P" to "ESC O X" for F1 to F9, "ESC O Y" for F12
  kBracketLetter,  ///< "ESC [ M" to "ESC [ X"
  kEscapeDigit,    ///< Escape, then "1" to "9", "0", "!" or "@", as typed by hand on a serial line
};

/// Bytes that are typed so many times.
std::string repeated(std::string_view bytes, int times);

/// The bytes of a key: "F1" to "F12", "Up", "Down", "Left", "Right", "Home", "End", "Insert",
/// "Delete", "PageUp", "PageDown", "Enter", "Esc", "Tab", "Space" or "Backspace". Throws
/// std::invalid_argument for any other name and for a key that the family does not have.
std::string keyBytes(std::string_view name, KeyFamily family = KeyFamily::kXterm);

}  // namespace Harness
