// SPDX-License-Identifier: MIT
#include "harness/screen.h"

#include <iomanip>
#include <sstream>

namespace Harness {

std::string utf8(std::uint32_t c) {
  const auto tail = [c](int shift) { return static_cast<char>(0x80 | (c >> shift & 0x3f)); };
  if (c < 0x80) return {static_cast<char>(c)};
  if (c < 0x800) return {static_cast<char>(0xc0 | c >> 6), tail(0)};
  if (c < 0x10000) return {static_cast<char>(0xe0 | c >> 12), tail(6), tail(0)};
  return {static_cast<char>(0xf0 | c >> 18), tail(12), tail(6), tail(0)};
}

std::string Screen::Row(int row) const {
  std::string text;
  for (int column = 0; column < size_.columns; ++column) text += At(row, column).text;
  return text;
}

std::string Screen::Cells(int row, int from, int to) const {
  std::string text;
  for (int column = from; column < to; ++column) text += At(row, column).text;
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string Screen::Text() const {
  std::string text;
  for (int row = 0; row < size_.rows; ++row) text += Cells(row, 0, size_.columns) + "\n";
  return text;
}

std::optional<Position> Screen::Find(std::string_view text) const {
  for (int row = 0; row < size_.rows; ++row) {
    const auto found = Row(row).find(text);
    if (found == std::string::npos) continue;
    int column = 0;
    for (std::size_t bytes = 0; bytes < found; ++column) bytes += At(row, column).text.size();
    return Position{row, column};
  }
  return std::nullopt;
}

bool Screen::operator==(const Screen& other) const {
  return size_ == other.size_ && cells_ == other.cells_ && cursorVisible == other.cursorVisible &&
         (!cursorVisible || cursor == other.cursor);
}

std::string Screen::Dump() const {
  std::ostringstream out;
  std::istringstream lines(Text());
  std::string line;
  for (int row = 0; std::getline(lines, line); ++row) {
    out << std::setw(3) << row << " |" << line << "\n";
  }
  out << "cursor " << (cursorVisible ? "visible" : "hidden") << " at row " << cursor.row
      << ", column " << cursor.column << "\n";
  return out.str();
}

std::string focusedText(const Screen& screen) {
  constexpr Colours kFocus{7, 0};
  std::string text;
  const auto [rows, columns] = screen.GetSize();
  for (int i = 0; i < rows * columns; ++i)
    if (screen.ColoursAt(i / columns, i % columns) == kFocus)
      text += screen.At(i / columns, i % columns).text;
  const std::size_t start = text.find_first_not_of(' ');
  return start == std::string::npos ? ""
                                    : text.substr(start, text.find_last_not_of(' ') + 1 - start);
}

void PrintTo(const Screen& screen, std::ostream* out) {
  *out << "\n" << screen.Dump();
}

}  // namespace Harness
