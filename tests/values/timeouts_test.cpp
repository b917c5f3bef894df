// SPDX-License-Identifier: MIT
#include "system/timeout_value.h"

#include <gtest/gtest.h>

using namespace Kiva;

TEST(Timeouts, AreReadAndJudged) {
  using enum TimeoutVerdict;
  using Number = std::int64_t;
  const std::tuple<const char*, Number, Number, Number, TimeoutVerdict> cases[] = {
      {"", 0, 0, 1, Unchanged},
      {"none", 0, 5, 1, Changed},
      {"010\n", 10, 600, 60, Unchanged},
      {"1", 1, 90, 60, Changed},
      {"1440", 1440, 0, 60, Changed},
      {"1441", 1441, 1441 * 60, 60, Refused},
      {"-5", -5, 0, 1, Refused},
      {"4294967297", 4294967297, 1, 1, Refused},
      {"99999999999", 99999999999, 0, 60, Refused},
      {"99999999999999999999", INT64_MAX, 0, 60, Refused}};
  for (const auto& [text, number, stored, perMinute, verdict] : cases) {
    EXPECT_EQ(parseNumber(text), number) << text;
    EXPECT_EQ(judgeTimeout(number, stored, perMinute), verdict) << text;
  }
}
