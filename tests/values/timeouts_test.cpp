// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>

#include "system/timeout_value.h"

using namespace Kiva;

namespace {

TEST(Timeouts, AreReadAndJudged) {
  using enum TimeoutVerdict;
  constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
  const struct {
    const char* text;
    std::int64_t number, stored, perMinute;
    TimeoutVerdict verdict;
  } cases[] = {{"", 0, 0, 1, Unchanged},
               {"none", 0, 5, 1, Changed},
               {"0", 0, 60, 60, Changed},
               {"007", 7, 7, 1, Unchanged},
               {"10\n", 10, 600, 60, Unchanged},
               {"1", 1, 90, 60, Changed},
               {"1", 1, 1, 1, Unchanged},
               {"1440", 1440, 0, 60, Changed},
               {"1441", 1441, 0, 1, Refused},
               {"2000", 2000, 120000, 60, Refused},
               {"-5", -5, 0, 1, Refused},
               {"4294967297", 4294967297, 1, 1, Refused},
               {"99999999999", 99999999999, 0, 60, Refused},
               {"99999999999999999999", kLargest, 0, 60, Refused},
               {"-99999999999999999999", -kLargest - 1, 0, 60, Refused}};
  for (const auto& [text, number, stored, perMinute, verdict] : cases) {
    EXPECT_EQ(parseNumber(text), number) << text;
    EXPECT_EQ(judgeTimeout(number, stored, perMinute), verdict) << text;
  }
}

}  // namespace
