// SPDX-License-Identifier: MIT
#include "console/log_table.h"

#include <sys/stat.h>

#include "hostctl/lib/platform.h"

namespace Kiva {

LogFlags availableLogs() {
  LogFlags flags{};
  for (std::size_t row = 0; row < kSystemLogs.size(); ++row) {
    struct stat status {};
    const std::string path = HostCtl::Lib::platform().HostPath(kSystemLogs[row].file);
    flags[row] = stat(path.c_str(), &status) == 0;
  }
  return flags;
}

std::optional<std::size_t> logForDigit(int digit, const LogFlags& available) {
  std::size_t count = 0;
  for (std::size_t row = 0; row < available.size(); ++row) {
    if (available[row]) ++count;
    if (count == static_cast<std::size_t>(digit)) return row;
  }
  if (count == available.size()) return std::nullopt;
  return count;
}

}  // namespace Kiva
