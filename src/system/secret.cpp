// SPDX-License-Identifier: MIT
#include "system/secret.h"

#include <cstring>

namespace Kiva {

Secret::Secret(std::string_view text) {
  if (!text.empty()) noCoreFile_.Impose();
  bytes_.reserve(text.size() + 1);
  bytes_.assign(text.begin(), text.end());
  bytes_.push_back('\0');
}

void Secret::Wipe() {
  if (bytes_.empty()) return;
  explicit_bzero(bytes_.data(), bytes_.size());
  bytes_.clear();
  noCoreFile_.Lift();
}

}  // namespace Kiva
