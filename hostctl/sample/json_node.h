// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace HostSample {

/// A value of host.json that is missing or not what it should be; the text names its place.
class KeyError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One value of host.json and its place in the file ("hardware.bios.version"), so that whatever is
/// wrong with it can be told to the person who wrote it. Every reader throws KeyError.
class JsonNode {
 public:
  using Json = nlohmann::ordered_json;
  JsonNode(const Json& json, std::string place) : json_(&json), place_(std::move(place)) {}

  JsonNode operator[](const std::string& key) const;
  /// Nothing when the key is not there or null.
  std::optional<JsonNode> Find(const std::string& key) const;
  std::vector<JsonNode> Items() const;
  std::vector<std::pair<std::string, JsonNode>> Members() const;

  std::string Text() const;
  bool Flag() const;
  bool IsText() const;
  /// A whole number within the limits, both included.
  long long Number(long long least, long long most) const;

  [[noreturn]] void Refuse(const std::string& expected) const;

 private:
  const Json* json_;
  std::string place_;
};

}  // namespace HostSample
