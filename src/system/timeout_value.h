// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace Kiva {

// Time-outs: operators see whole minutes, the host keeps seconds.

inline constexpr std::int64_t kSecondsPerMinute = 60;

/// The decimal number that `text` begins with, or the nearest one that fits; 0 without one.
std::int64_t parseNumber(const std::string& text);

/// What becomes of a time-out that the operator confirms.
enum class TimeoutVerdict { Refused, Unchanged, Changed };

/// Judges `minutes` against what the host keeps, `stored`, in units of which `perMinute` are a
/// minute. More than a day is refused, and so is what is below zero.
TimeoutVerdict judgeTimeout(std::int64_t minutes, std::int64_t stored, std::int64_t perMinute);

}  // namespace Kiva
