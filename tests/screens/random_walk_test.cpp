// SPDX-License-Identifier: MIT
// An operator who presses anything at all: nothing may crash, hang or end with another status than
// 0. KIVA_WALK_SEED repeats a walk (as far as time allows), KIVA_WALK_KEYS makes it longer.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>

#include "harness/random_operator.h"

using namespace Harness;

namespace {

constexpr unsigned long kKeys = 11000;  // of each size
constexpr Size kSizes[] = {{24, 80}, {25, 80}, {43, 132}, {5, 20}, {100, 300}};

unsigned long numberFrom(const char* variable, unsigned long otherwise) {
  const char* text = std::getenv(variable);
  return text ? std::strtoul(text, nullptr, 10) : otherwise;
}

class RandomWalk : public testing::TestWithParam<Size> {};

TEST_P(RandomWalk, FindsNothing) {
  const unsigned long seed = numberFrom("KIVA_WALK_SEED", std::random_device()());
  std::cout << "KIVA_WALK_SEED=" << seed << std::endl;
  const TemporaryFolder reports;
  const std::string path = "log_path=" + (reports.Path() / "report").string();
  RandomOperator someone(seed, GetParam(), {{"ASAN_OPTIONS", path}, {"UBSAN_OPTIONS", path}});
  const unsigned long keys = numberFrom("KIVA_WALK_KEYS", kKeys);
  EXPECT_NO_THROW(someone.Press(keys));
  for (const auto& report : std::filesystem::directory_iterator(reports.Path()))
    ADD_FAILURE() << std::ifstream(report.path()).rdbuf();
  EXPECT_GT(someone.Host().Journal("log.auth.emerg").size(), keys / 3000)
      << "it must get further than the door";
}

INSTANTIATE_TEST_SUITE_P(Sizes, RandomWalk, testing::ValuesIn(kSizes), [](const auto& size) {
  return std::to_string(size.param.columns) + "x" + std::to_string(size.param.rows);
});

}  // namespace
