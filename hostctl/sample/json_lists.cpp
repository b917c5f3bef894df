// SPDX-License-Identifier: MIT
#include "sample/json_lists.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"

namespace HostSample {

Json* findNamed(Json& list, const std::string& name) {
  const auto found = std::find_if(list.begin(), list.end(),
                                  [&](const Json& item) { return item["name"] == name; });
  return found == list.end() ? nullptr : &*found;
}

Json& named(Json& list, const std::string& name, const std::string& kind) {
  if (Json* found = findNamed(list, name)) return *found;
  throw HostCtl::Lib::HostCtlException("There is no " + kind + " " + name + ".");
}

bool contains(const Json& list, const std::string& text) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

bool removeFrom(Json& list, const std::string& text) {
  const auto found = std::find(list.begin(), list.end(), text);
  if (found == list.end()) return false;
  list.erase(found);
  return true;
}

bool has(const Json& item, const char* key, const Json& value) {
  const auto found = item.find(key);
  return found != item.end() && *found == value;
}

void removeItems(Json& list, const char* key, const std::string& text) {
  std::erase_if(list.get_ref<Json::array_t&>(),
                [&](const Json& item) { return has(item, key, text); });
}

}  // namespace HostSample
