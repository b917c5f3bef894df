// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sample/json_node.h"

namespace HostSample {

template <typename Value, std::size_t Size>
using Choices = std::array<std::pair<std::string_view, Value>, Size>;

/// The value that the table gives for the node's text.
template <typename Value, std::size_t Size>
Value readChoice(const JsonNode& node, const Choices<Value, Size>& choices) {
  const std::string text = node.Text();
  std::string names;
  for (const auto& [name, value] : choices) {
    if (text == name) return value;
    names.append(names.empty() ? "" : ", ").append(name);
  }
  node.Refuse("one of " + names);
}

/// The text that the table gives for `value`, which it has.
template <typename Value, std::size_t Size>
std::string_view nameOf(Value value, const Choices<Value, Size>& choices) {
  return std::find_if(choices.begin(), choices.end(),
                      [&](const auto& choice) { return choice.second == value; })
      ->first;
}

/// Every item of a list, read by `read`.
template <typename Read>
auto readList(const JsonNode& node, Read read) {
  std::vector<decltype(read(node))> values;
  for (const JsonNode& item : node.Items()) values.push_back(read(item));
  return values;
}

/// Every member of an object, its value read by `read`.
template <typename Read>
auto readMap(const JsonNode& node, Read read) {
  std::map<std::string, decltype(read(node))> values;
  for (const auto& [key, value] : node.Members()) values.emplace(key, read(value));
  return values;
}

inline std::string readText(const JsonNode& node) {
  return node.Text();
}
inline bool readFlag(const JsonNode& node) {
  return node.Flag();
}

}  // namespace HostSample
