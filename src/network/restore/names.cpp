// SPDX-License-Identifier: MIT
#include "network/restore/names.h"

#include <algorithm>

namespace Kiva {

std::string firstFreeName(const std::string& prefix, const std::vector<std::string>& taken) {
  for (int number = 0;; ++number) {
    std::string name = prefix + std::to_string(number);
    if (std::find(taken.begin(), taken.end(), name) == taken.end()) return name;
  }
}

}  // namespace Kiva
