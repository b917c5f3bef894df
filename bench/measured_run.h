// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "harness/child.h"
#include "harness/emulator.h"
#include "harness/output_filter.h"
#include "harness/pty.h"

namespace Bench {

/// What a program wrote in answer to something: until its last byte, and how many.
struct Burst {
  double milliseconds = 0;
  std::size_t bytes = 0;
};

/// A program started in a pseudo-terminal whose output is only read while the clock runs; the
/// terminal emulator gets it afterwards, to know what screen the program is at.
class MeasuredRun {
 public:
  /// Starts the program and reads its first full screen.
  explicit MeasuredRun(const Harness::Launch& launch);

  Burst FirstPaint() const { return firstPaint_; }
  /// Types bytes and reads the answer. A program that still works is not typed at.
  Burst Type(std::string_view bytes);
  bool Shows(std::string_view text) const { return emulator_.Look().Shows(text); }
  /// How many bytes come by themselves.
  std::size_t BytesWithin(std::chrono::milliseconds time);
  pid_t Pid() const { return child_.Pid(); }

 private:
  using Clock = std::chrono::steady_clock;

  MeasuredRun(const Harness::Launch& launch, Harness::Pty pty);
  Burst ReadBurst(Clock::time_point start);

  Harness::Pty pty_;
  Clock::time_point started_;
  Harness::Child child_;
  Harness::OutputFilter filter_;
  Harness::Emulator emulator_;
  Burst firstPaint_;
};

}  // namespace Bench
