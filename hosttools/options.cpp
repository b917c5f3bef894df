// SPDX-License-Identifier: MIT
#include "hosttools/options.h"

#include <algorithm>

namespace HostTools {

std::map<std::string, std::string> readOptions(std::span<const std::string> arguments,
                                               std::span<const char* const> wanted) {
  std::map<std::string, std::string> values;
  for (std::size_t i = 0; i < arguments.size(); i += 2) {
    const std::string& name = arguments[i];
    if (std::find(wanted.begin(), wanted.end(), name) == wanted.end())
      throw UsageError("unknown argument " + name);
    if (i + 1 == arguments.size()) throw UsageError(name + " needs a value");
    if (!values.emplace(name, arguments[i + 1]).second) throw UsageError(name + " given twice");
  }
  for (const char* name : wanted)
    if (values.count(name) == 0) throw UsageError("missing argument " + std::string(name));
  return values;
}

}  // namespace HostTools
