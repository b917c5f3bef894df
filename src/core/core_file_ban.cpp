// SPDX-License-Identifier: MIT
#include "core/core_file_ban.h"

#include <sys/resource.h>

#include <utility>

namespace Kiva {

namespace {

struct ImposedBans {
  int count = 0;
  rlim_t limitBefore = 0;
};

ImposedBans& imposedBans() {
  static ImposedBans one;
  return one;
}

/// Returns the soft limit as it was.
rlim_t setSoftLimit(rlim_t soft) {
  rlimit limit{};
  getrlimit(RLIMIT_CORE, &limit);
  const rlim_t before = std::exchange(limit.rlim_cur, soft);
  setrlimit(RLIMIT_CORE, &limit);
  return before;
}

}  // namespace

void CoreFileBan::Impose() {
  if (std::exchange(imposed_, true)) return;
  if (imposedBans().count++ == 0) imposedBans().limitBefore = setSoftLimit(0);
}

void CoreFileBan::Lift() {
  if (!std::exchange(imposed_, false)) return;
  if (--imposedBans().count == 0) setSoftLimit(imposedBans().limitBefore);
}

}  // namespace Kiva
