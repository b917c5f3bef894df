// SPDX-License-Identifier: MIT
#include "ui/keyword_table.h"

#include <utility>

namespace Kiva {

void KeywordTable::Register(std::string name, Value value) {
  values_.insert_or_assign(std::move(name), std::move(value));
}

const KeywordTable::Value* KeywordTable::Find(std::string_view name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? nullptr : &found->second;
}

KeywordTable& keywordTable() {
  static KeywordTable table;
  return table;
}

}  // namespace Kiva
