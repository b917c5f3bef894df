// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Harness {

struct Size {
  int rows = 25;
  int columns = 80;

  bool operator==(const Size&) const = default;
};

struct Position {
  int row = 0;
  int column = 0;

  bool operator==(const Position&) const = default;
};

/// A colour is a palette slot (0 to 255), `kDefaultColour`, or a direct colour with `kDirectColour`
/// set above its 24 bits of red, green and blue.
inline constexpr int kDefaultColour = -1;
inline constexpr int kDirectColour = 0x1000000;

struct Colours {
  int foreground = kDefaultColour;
  int background = kDefaultColour;

  bool operator==(const Colours&) const = default;
};

struct Cell {
  std::string text = " ";  ///< One character in UTF-8; a blank where nothing was written.
  Colours colours;
  bool reverse = false;
  bool bold = false;

  bool operator==(const Cell&) const = default;
};

/// A character's code point in UTF-8.
std::string utf8(std::uint32_t codePoint);

/// What an operator sees at one moment: cells and cursor. A plain value, so that a test can keep
/// one and compare it with a later one.
class Screen {
 public:
  explicit Screen(Size size = {}) : size_(size), cells_(size.rows * size.columns) {}

  const Size& GetSize() const { return size_; }
  Cell& At(int row, int column) { return cells_.at(row * size_.columns + column); }
  const Cell& At(int row, int column) const { return cells_.at(row * size_.columns + column); }
  Colours ColoursAt(int row, int column) const { return At(row, column).colours; }

  /// The text of a row in its full width.
  std::string Row(int row) const;
  /// The text of a row from one column up to another, without trailing blanks.
  std::string Cells(int row, int from, int to) const;
  /// All rows without their trailing blanks, each closed by a line break.
  std::string Text() const;
  /// The first place of a text that stands within one row.
  std::optional<Position> Find(std::string_view text) const;
  bool Shows(std::string_view text) const { return Find(text).has_value(); }
  /// The text with row numbers and the cursor, to be read by a human when a test fails.
  std::string Dump() const;

  /// Whether an operator sees the same. Where a hidden cursor stands is not to be seen.
  bool operator==(const Screen& other) const;

  Position cursor;
  bool cursorVisible = true;

 private:
  Size size_;
  std::vector<Cell> cells_;
};

/// The text in the colours of the focus, white on black, without the blanks around it.
std::string focusedText(const Screen& screen);

/// How a failed comparison of screens prints them.
void PrintTo(const Screen& screen, std::ostream* out);

}  // namespace Harness
