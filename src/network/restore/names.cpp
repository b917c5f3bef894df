// SPDX-License-Identifier: MIT
#include "network/restore/names.h"

#include <algorithm>

#include "core/keys.h"

namespace Kiva {

namespace {

constexpr std::size_t kLongestSwitch = 32;
constexpr std::size_t kLongestPortGroup = 64;

bool isSwitchCharacter(char c) {
  return Key::isLetter(c) || Key::isDigit(c) || c == '.' || c == '_' || c == '-';
}

bool isPortGroupCharacter(char c) {
  return Key::isPrintable(c) && c != '/';
}

// These two are places, not names, to whoever keeps switches in files.
bool isName(std::string_view text, std::size_t longest, bool (*mayHold)(char)) {
  return !text.empty() && text.size() <= longest && text != "." && text != ".." &&
         std::all_of(text.begin(), text.end(), mayHold);
}

}  // namespace

bool isSwitchName(std::string_view name) {
  return isName(name, kLongestSwitch, isSwitchCharacter);
}

bool isPortGroupName(std::string_view name) {
  return isName(name, kLongestPortGroup, isPortGroupCharacter) && name.front() != ' ' &&
         name.back() != ' ';
}

std::string firstFreeName(const std::string& prefix, const std::vector<std::string>& taken) {
  for (int number = 0;; ++number) {
    std::string name = prefix + std::to_string(number);
    if (std::find(taken.begin(), taken.end(), name) == taken.end()) return name;
  }
}

}  // namespace Kiva
