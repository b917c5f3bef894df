// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Kiva {

/// The text between a pair of braces, split at its first colon. Without a colon the whole text is
/// the name and the value too.
struct MarkupTag {
  std::string_view name;
  std::string_view value;
};

constexpr MarkupTag splitTag(std::string_view text) {
  const auto colon = text.find(':');
  if (colon == std::string_view::npos) return {text, text};
  return {text.substr(0, colon), text.substr(colon + 1)};
}

/// Hands markup over piece by piece: `onByte(byte)` for each byte outside tags, until it answers
/// false, and `onTag(text)` for the text of each closed tag. What an unclosed brace opens is
/// swallowed.
template <typename OnByte, typename OnTag>
void walkMarkup(std::string_view markup, OnByte onByte, OnTag onTag) {
  for (std::size_t at = 0; at < markup.size(); ++at) {
    if (markup[at] != '{') {
      if (!onByte(markup[at])) return;
      continue;
    }
    const auto end = markup.find('}', at);
    if (end == std::string_view::npos) return;
    onTag(markup.substr(at + 1, end - at - 1));
    at = end;
  }
}

}  // namespace Kiva
