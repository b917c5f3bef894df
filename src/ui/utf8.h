// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace Kiva {

/// What markup needs to know of UTF-8: where a character begins, and that curses never gets a
/// broken one. Every character counts as one column.

/// A byte inside a character, which takes no column of its own.
constexpr bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

/// The text with every byte that begins no valid character replaced by '?', and without stray bytes
/// from inside of one, which take no column. Braces, blanks and control bytes stay.
std::string repairedUtf8(std::string_view text);

/// Columns of well-formed text.
int columnCount(std::string_view text);

/// The same text; one that has more columns ends in "(...)" instead.
std::string cut(const std::string& text, int columns);

/// The text's first `lines` lines; where it has more, the last of them, which should have no
/// markup, ends in "(...)" within `columns`.
std::string cutLines(const std::string& text, int lines, int columns);

/// The first `columns` columns of well-formed text.
std::string_view firstColumns(std::string_view text, int columns);

}  // namespace Kiva
