// SPDX-License-Identifier: MIT
#include "system/timeout_value.h"

#include <cstdlib>

namespace Kiva {

namespace {

constexpr std::int64_t kMostMinutes = 1440;

}  // namespace

std::int64_t parseNumber(const std::string& text) {
  return std::strtoll(text.c_str(), nullptr, 10);
}

TimeoutVerdict judgeTimeout(std::int64_t minutes, std::int64_t stored, std::int64_t perMinute) {
  if (minutes < 0 || minutes > kMostMinutes) return TimeoutVerdict::Refused;
  return minutes * perMinute == stored ? TimeoutVerdict::Unchanged : TimeoutVerdict::Changed;
}

}  // namespace Kiva
