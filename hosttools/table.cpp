// SPDX-License-Identifier: MIT
#include "hosttools/table.h"

#include <algorithm>

namespace HostTools {

namespace {

std::string shown(std::string cell) {
  if (cell.empty()) return "-";
  for (char& c : cell)
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') c = '?';
  return cell;
}

std::size_t widthOf(const std::string& cell) {
  return static_cast<std::size_t>(std::count_if(cell.begin(), cell.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xc0) != 0x80;
  }));
}

std::vector<std::size_t> columnWidths(const std::vector<Row>& rows) {
  std::vector<std::size_t> widths(rows.front().size());
  for (const Row& row : rows)
    for (std::size_t i = 0; i < widths.size(); ++i)
      widths[i] = std::max(widths[i], widthOf(shown(row.at(i))));
  return widths;
}

}  // namespace

std::string tableText(const std::vector<Row>& rows) {
  constexpr std::size_t kGap = 2;
  const auto widths = columnWidths(rows);
  std::string text;
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < widths.size(); ++i) {
      const std::string cell = shown(row[i]);
      const bool last = i + 1 == widths.size();
      text += cell + (last ? "\n" : std::string(widths[i] - widthOf(cell) + kGap, ' '));
    }
  }
  return text;
}

}  // namespace HostTools
