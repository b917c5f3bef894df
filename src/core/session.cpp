// SPDX-License-Identifier: MIT
#include "core/session.h"

namespace Kiva {

Session& session() {
  static Session one;
  return one;
}

}  // namespace Kiva
