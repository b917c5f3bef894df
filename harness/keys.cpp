// SPDX-License-Identifier: MIT
#include "harness/keys.h"

#include <array>
#include <stdexcept>

namespace Harness {
namespace {

struct KeyRow {
  std::string_view name;
  /// What follows Escape, one for each family in the order of KeyFamily.
  std::array<std::string_view, 6> afterEscape;
};

constexpr KeyRow kKeys[] = {
    // name      xterm    linux    vt220    vt100  letter  digit
    {"F1", {"OP", "[[A", "[11~", "OP", "[M", "1"}},
    {"F2", {"OQ", "[[B", "[12~", "OQ", "[N", "2"}},
    {"F3", {"OR", "[[C", "[13~", "OR", "[O", "3"}},
    {"F4", {"OS", "[[D", "[14~", "OS", "[P", "4"}},
    {"F5", {"[15~", "[[E", "[15~", "OT", "[Q", "5"}},
    {"F6", {"[17~", "[17~", "[17~", "OU", "[R", "6"}},
    {"F7", {"[18~", "[18~", "[18~", "OV", "[S", "7"}},
    {"F8", {"[19~", "[19~", "[19~", "OW", "[T", "8"}},
    {"F9", {"[20~", "[20~", "[20~", "OX", "[U", "9"}},
    {"F10", {"[21~", "[21~", "[21~", "", "[V", "0"}},
    {"F11", {"[23~", "[23~", "[23~", "", "[W", "!"}},
    {"F12", {"[24~", "[24~", "[24~", "OY", "[X", "@"}},
    {"Up", {"OA", "[A", "[A", "OA", "[A", "[A"}},
    {"Down", {"OB", "[B", "[B", "OB", "[B", "[B"}},
    {"Right", {"OC", "[C", "[C", "OC", "[C", "[C"}},
    {"Left", {"OD", "[D", "[D", "OD", "[D", "[D"}},
    {"Home", {"OH", "[1~", "[1~", "", "", "h"}},
    {"End", {"OF", "[4~", "[4~", "", "", "k"}},
    {"Insert", {"[2~", "[2~", "[2~", "", "", "+"}},
    {"Delete", {"[3~", "[3~", "[3~", "", "", "-"}},
    {"PageUp", {"[5~", "[5~", "[5~", "", "", "?"}},
    {"PageDown", {"[6~", "[6~", "[6~", "", "", "/"}},
};

struct PlainKey {
  std::string_view name;
  std::string_view bytes;
};

constexpr PlainKey kPlainKeys[] = {
    {"Enter", "\r"}, {"Esc", "\033"}, {"Tab", "\t"}, {"Backspace", "\177"}, {"Space", " "}};

}  // namespace

std::string keyBytes(std::string_view name, KeyFamily family) {
  for (const PlainKey& key : kPlainKeys) {
    if (key.name == name) return std::string(key.bytes);
  }
  for (const KeyRow& key : kKeys) {
    const std::string_view tail = key.afterEscape[static_cast<std::size_t>(family)];
    if (key.name == name && !tail.empty()) return "\033" + std::string(tail);
  }
  throw std::invalid_argument("no such key in this family: " + std::string(name));
}

std::string repeated(std::string_view bytes, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += bytes;
  return all;
}

}  // namespace Harness
