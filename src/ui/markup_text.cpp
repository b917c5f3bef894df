// SPDX-License-Identifier: MIT
#include "ui/markup_text.h"

#include <algorithm>

#include "ui/keyword_table.h"
#include "ui/markup_layout.h"
#include "ui/markup_tag.h"

namespace Kiva {

std::string plainText(std::string_view text) {
  std::string plain(text);
  std::replace(plain.begin(), plain.end(), '{', '(');
  std::replace(plain.begin(), plain.end(), '}', ')');
  return plain;
}

int countLines(std::string_view markup, int width) {
  const std::string laidOut = layOutMarkup(markup, width, keywordTable());
  int lines = 0;
  bool lineBegun = false;
  walkMarkup(
      laidOut,
      [&](char byte) {
        lines += lineBegun ? 0 : 1;
        lineBegun = byte != '\n';
        return true;
      },
      [](std::string_view) {});
  return lines;
}

std::string squeezeBlanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\n\v\f\r";
  std::string squeezed;
  while (true) {
    const auto begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return squeezed;
    const std::string_view word = text.substr(begin, text.find_first_of(kBlanks, begin) - begin);
    if (!squeezed.empty()) squeezed += ' ';
    squeezed += word;
    text.remove_prefix(begin + word.size());
  }
}

}  // namespace Kiva
