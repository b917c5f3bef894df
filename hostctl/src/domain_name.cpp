// SPDX-License-Identifier: MIT
#include "hostseam/domain_name.h"

#include <algorithm>

namespace HostSeam {

namespace {

constexpr std::size_t kLongestLabel = 63;
constexpr std::size_t kLongestName = 253;

bool isLabelCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '_';
}

bool isLabel(std::string_view text) {
  return !text.empty() && text.size() <= kLongestLabel && text.front() != '-' &&
         text.back() != '-' && std::all_of(text.begin(), text.end(), isLabelCharacter);
}

}  // namespace

bool isDomainName(std::string_view text) {
  if (text.ends_with('.')) text.remove_suffix(1);
  if (text.size() > kLongestName) return false;
  for (auto point = text.find('.'); point != text.npos; point = text.find('.')) {
    if (!isLabel(text.substr(0, point))) return false;
    text.remove_prefix(point + 1);
  }
  return isLabel(text);
}

}  // namespace HostSeam
