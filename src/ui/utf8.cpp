// SPDX-License-Identifier: MIT
#include "ui/utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Kiva {

namespace {

/// Lead bytes of one kind, and the range of the byte that may follow: the narrow ranges leave out
/// overlong forms, surrogates and what lies beyond U+10FFFF.
struct Lead {
  unsigned char first, last;
  unsigned char secondFirst, secondLast;
  std::size_t length;
};

constexpr std::array kLeads = {
    Lead{0x00, 0x7f, 0x00, 0x00, 1}, Lead{0xc2, 0xdf, 0x80, 0xbf, 2},
    Lead{0xe0, 0xe0, 0xa0, 0xbf, 3}, Lead{0xe1, 0xec, 0x80, 0xbf, 3},
    Lead{0xed, 0xed, 0x80, 0x9f, 3}, Lead{0xee, 0xef, 0x80, 0xbf, 3},
    Lead{0xf0, 0xf0, 0x90, 0xbf, 4}, Lead{0xf1, 0xf3, 0x80, 0xbf, 4},
    Lead{0xf4, 0xf4, 0x80, 0x8f, 4},
};

bool within(char byte, unsigned char first, unsigned char last) {
  const auto value = static_cast<unsigned char>(byte);
  return first <= value && value <= last;
}

/// Bytes of the character that the text begins with; 0 when it begins with none.
std::size_t characterLength(std::string_view text) {
  const auto lead = std::find_if(kLeads.begin(), kLeads.end(), [&](const Lead& candidate) {
    return within(text.front(), candidate.first, candidate.last);
  });
  if (lead == kLeads.end() || text.size() < lead->length) return 0;
  if (lead->length == 1) return 1;
  if (!within(text[1], lead->secondFirst, lead->secondLast)) return 0;
  const std::string_view rest = text.substr(2, lead->length - 2);
  return std::all_of(rest.begin(), rest.end(), isContinuation) ? lead->length : 0;
}

}  // namespace

std::string repairedUtf8(std::string_view text) {
  const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
  if (std::all_of(text.begin(), text.end(), isAscii)) return std::string(text);
  std::string repaired;
  repaired.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    if (length > 0)
      repaired += text.substr(0, length);
    else if (!isContinuation(text.front()))
      repaired += '?';
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return repaired;
}

int columnCount(std::string_view text) {
  return static_cast<int>(
      std::count_if(text.begin(), text.end(), [](char byte) { return !isContinuation(byte); }));
}

namespace {

constexpr std::string_view kCut = "(...)";

}  // namespace

std::string cut(const std::string& text, int columns) {
  if (columnCount(text) <= std::max(columns, 0)) return text;
  return std::string(firstColumns(text, columns - columnCount(kCut))).append(kCut);
}

std::string cutLines(const std::string& text, int lines, int columns) {
  std::size_t begin = 0, end = 0;
  for (int line = 0; line < lines; ++line) {
    begin = end;
    const auto found = text.find('\n', begin);
    if (found == std::string::npos || found + 1 == text.size()) return text;
    end = found + 1;
  }
  const std::string last = text.substr(begin, end - begin - 1) + std::string(kCut);
  return text.substr(0, begin) + cut(last, columns);
}

std::string_view firstColumns(std::string_view text, int columns) {
  const auto end = std::find_if(text.begin(), text.end(),
                                [&](char byte) { return !isContinuation(byte) && columns-- <= 0; });
  return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

}  // namespace Kiva
