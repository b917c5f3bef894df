// SPDX-License-Identifier: MIT
#include "sample/json_node.h"

#include <nlohmann/json.hpp>

namespace HostSample {

namespace {

std::string below(const std::string& place, const std::string& key) {
  return place.empty() ? key : place + "." + key;
}

}  // namespace

void JsonNode::Refuse(const std::string& expected) const {
  throw KeyError((place_.empty() ? "the whole" : place_) + " is not " + expected);
}

std::optional<JsonNode> JsonNode::Find(const std::string& key) const {
  if (!json_->is_object()) Refuse("an object");
  const auto found = json_->find(key);
  if (found == json_->end() || found->is_null()) return std::nullopt;
  return JsonNode(*found, below(place_, key));
}

JsonNode JsonNode::operator[](const std::string& key) const {
  if (auto found = Find(key)) return std::move(*found);
  throw KeyError(below(place_, key) + " is missing");
}

std::vector<JsonNode> JsonNode::Items() const {
  if (!json_->is_array()) Refuse("a list");
  std::vector<JsonNode> items;
  for (const Json& item : *json_)
    items.emplace_back(item, place_ + "[" + std::to_string(items.size()) + "]");
  return items;
}

std::vector<std::pair<std::string, JsonNode>> JsonNode::Members() const {
  if (!json_->is_object()) Refuse("an object");
  std::vector<std::pair<std::string, JsonNode>> members;
  for (const auto& [key, value] : json_->items())
    members.emplace_back(key, JsonNode(value, below(place_, key)));
  return members;
}

bool JsonNode::IsText() const {
  return json_->is_string();
}

std::string JsonNode::Text() const {
  if (!IsText()) Refuse("a text");
  return json_->get<std::string>();
}

bool JsonNode::Flag() const {
  if (!json_->is_boolean()) Refuse("true or false");
  return json_->get<bool>();
}

long long JsonNode::Number(long long least, long long most) const {
  const bool tooLarge = json_->is_number_unsigned() &&
                        json_->get<unsigned long long>() > static_cast<unsigned long long>(most);
  if (!json_->is_number_integer() || tooLarge || json_->get<long long>() < least ||
      json_->get<long long>() > most)
    Refuse("a whole number from " + std::to_string(least) + " to " + std::to_string(most));
  return json_->get<long long>();
}

}  // namespace HostSample
