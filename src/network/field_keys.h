// SPDX-License-Identifier: MIT
#pragma once

#include "core/keys.h"

namespace Kiva {

/// What the fields of host names and domains take.
constexpr bool isHostNameKey(int key) {
  return Key::isLetter(key) || Key::isDigit(key) || key == '-' || key == '.';
}

}  // namespace Kiva
