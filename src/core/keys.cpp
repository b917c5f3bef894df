// SPDX-License-Identifier: MIT
#include "core/keys.h"

#include <curses.h>

#include <string>

namespace Kiva {

namespace {

struct Definition {
  const char* sequence;
  int key;
};

constexpr Definition kDefinitions[] = {
    {"R", Key::kResize},         {"[11~", Key::function(1)},  {"[12~", Key::function(2)},
    {"[13~", Key::function(3)},  {"[14~", Key::function(4)},  {"[15~", Key::function(5)},
    {"[17~", Key::function(6)},  {"[18~", Key::function(7)},  {"[19~", Key::function(8)},
    {"[20~", Key::function(9)},  {"[21~", Key::function(10)}, {"[23~", Key::function(11)},
    {"[24~", Key::function(12)},
};

// Consecutive keys from F1 on, one last byte each, behind a common beginning.
struct Family {
  const char* beginning;
  const char* endings;
};

constexpr Family kFunctionFamilies[] = {
    {"", "1234567890!@"},
    {"[", "MNOPQRSTUVWX"},
    {"O", "PQRSTUVWX"},
};

constexpr Definition kMoreDefinitions[] = {
    {"OY", Key::function(12)}, {"h", Key::kHome},     {"k", Key::kEnd},
    {"+", Key::kInsert},       {"-", Key::kDelete},   {"?", Key::kPageUp},
    {"/", Key::kPageDown},     {"OA", Key::kUp},      {"OB", Key::kDown},
    {"OC", Key::kRight},       {"OD", Key::kLeft},    {"[A", Key::kUp},
    {"[B", Key::kDown},        {"[C", Key::kRight},   {"[D", Key::kLeft},
    {"[2~", Key::kInsert},     {"[3~", Key::kDelete}, {"[1~", Key::kHome},
    {"[4~", Key::kEnd},        {"[5~", Key::kPageUp}, {"[6~", Key::kPageDown},
    {"OM", Key::kKeypadEnter},
};

void define(const std::string& sequence, int key) {
  define_key(("\033" + sequence).c_str(), key);
}

}  // namespace

void defineKeys() {
  for (const auto& [sequence, key] : kDefinitions) define(sequence, key);
  for (const auto& [beginning, endings] : kFunctionFamilies)
    for (int i = 0; endings[i] != '\0'; ++i)
      define(std::string(beginning) + endings[i], Key::function(i + 1));
  for (const auto& [sequence, key] : kMoreDefinitions) define(sequence, key);
  define_key("\177", Key::kBackspace);
}

}  // namespace Kiva
