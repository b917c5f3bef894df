// SPDX-License-Identifier: MIT
#include "bench/measured_run.h"

#include <stdexcept>
#include <utility>

#include "harness/readiness.h"

namespace Bench {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kSilence{100};
constexpr std::chrono::seconds kLongestBurst{20};

}  // namespace

MeasuredRun::MeasuredRun(const Harness::Launch& launch)
    : MeasuredRun(launch, Harness::Pty(Harness::Size{})) {}

MeasuredRun::MeasuredRun(const Harness::Launch& launch, Harness::Pty pty)
    : pty_(std::move(pty)),
      started_(Clock::now()),
      child_(launch, pty_.Path()),
      emulator_(Harness::Size{}),
      firstPaint_(ReadBurst(started_)) {}

Burst MeasuredRun::ReadBurst(Clock::time_point start) {
  std::string output;
  Clock::time_point last = start;
  while (true) {
    const std::string bytes = pty_.Read(kSilence);
    if (!bytes.empty()) {
      last = Clock::now();
      output += bytes;
    } else if (child_.Ended() || Harness::waitsForKeys(Pid())) {
      break;
    } else if (Clock::now() > start + kLongestBurst) {
      throw std::runtime_error("a program does not come to rest");
    }
  }
  emulator_.Write(filter_.Pass(output));
  return {std::chrono::duration<double, std::milli>(last - start).count(), output.size()};
}

Burst MeasuredRun::Type(std::string_view bytes) {
  const auto start = Clock::now();
  pty_.Write(bytes);
  return ReadBurst(start);
}

std::size_t MeasuredRun::BytesWithin(milliseconds time) {
  std::size_t count = 0;
  const auto end = Clock::now() + time;
  for (auto now = Clock::now(); now < end; now = Clock::now()) {
    count += pty_.Read(std::chrono::ceil<milliseconds>(end - now)).size();
  }
  return count;
}

}  // namespace Bench
