// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace Kiva {

/// Keywords of the markup, such as "hostname", and the functions that know their values. The
/// functions belong to the console, which registers them; text areas only look them up.
class KeywordTable {
 public:
  using Value = std::function<std::string()>;

  /// The last registration of a name holds.
  void Register(std::string name, Value value);
  /// The value function of a whole tag text, or null when that is no keyword. The pointer holds as
  /// long as the table.
  const Value* Find(std::string_view name) const;

 private:
  std::map<std::string, Value, std::less<>> values_;
};

/// The table of every text area; the console fills it once, before the first window.
KeywordTable& keywordTable();

}  // namespace Kiva
