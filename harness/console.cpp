// SPDX-License-Identifier: MIT
#include "harness/console.h"

#include "harness/readiness.h"
#include "harness/steps.h"

namespace Harness {
namespace {

using Clock = std::chrono::steady_clock;

constexpr Console::Milliseconds kBetweenLooks{2};
/// A key that wakes nobody (the terminal itself acts on it) is not waited for any longer.
constexpr Console::Milliseconds kWakeLimit{1000};

}  // namespace

bool Console::Reached(const std::function<bool()>& isTrue) {
  const auto end = Clock::now() + deadline_;
  while (!isTrue()) {
    if (child_.Ended()) {
      Drain();
      return isTrue();  // nothing more will come
    }
    if (Clock::now() > end) return false;
    Pump(kBetweenLooks);
  }
  return true;
}

void Console::Fail(std::string_view what) {
  const auto ended = child_.Ended();
  throw WaitFailed("waited in vain for " + std::string(what) + "; the program " +
                   (ended ? "has ended with " + std::to_string(*ended) : "is running") +
                   ", the screen is:\n" + Look().Dump());
}

bool Console::IsSettled() {
  if (child_.Ended()) {
    Drain();
    return true;
  }
  const pid_t reader = foregroundOf(Pid());
  const long sleeps = sleepsOf(reader);
  if (HasTypeAhead() || !waitsForKeys(reader)) return false;
  Drain();
  return foregroundOf(Pid()) == reader && sleepsOf(reader) == sleeps && waitsForKeys(reader);
}

void Console::Do(const std::vector<std::string>& steps) {
  takeSteps(*this, steps);
}

void Console::Settle() {
  if (!Reached([this] { return IsSettled(); })) Fail("the program to wait for a key");
}

void Console::SendAndSettle(std::string_view bytes) {
  Settle();
  const pid_t reader = foregroundOf(Pid());
  const long sleeps = sleepsOf(reader);
  Send(bytes);
  const auto end = Clock::now() + kWakeLimit;
  // On a pseudo-terminal the bytes arrive a moment after they were written.
  while (!HasTypeAhead() && sleepsOf(reader) == sleeps && !child_.Ended() && Clock::now() < end) {
    Pump(kBetweenLooks);
  }
  Settle();
}

void Console::Press(std::string_view key, int times) {
  for (int i = 0; i < times; ++i) SendAndSettle(keyBytes(key, family_));
}

void Console::Type(std::string_view text) {
  SendAndSettle(text);
}

Screen Console::WaitFor(std::string_view text) {
  if (!Reached([&] { return IsSettled() && Look().Shows(text); })) {
    Fail("the text \"" + std::string(text) + "\"");
  }
  return Look();
}

Screen Console::WaitForGone(std::string_view text) {
  if (!Reached([&] { return IsSettled() && !Look().Shows(text); })) {
    Fail("the text \"" + std::string(text) + "\" to go");
  }
  return Look();
}

// An update may arrive in pieces, so a screen counts once two looks at it agree.
Screen Console::WaitForPassing(std::string_view text) {
  Screen before;
  const auto shows = [&](const Screen& screen) {
    return std::exchange(before, screen) == screen && screen.Shows(text);
  };
  return WaitUntil(shows, "the text \"" + std::string(text) + "\"");
}

Screen Console::WaitUntil(const std::function<bool(const Screen&)>& isTrue, std::string_view what) {
  Screen screen;
  if (!Reached([&] { return isTrue(screen = Look()); })) Fail(what);
  return screen;
}

int Console::WaitForExit() {
  if (!Reached([this] { return child_.Ended().has_value(); })) Fail("the program to end");
  Drain();
  return *child_.Ended();
}

}  // namespace Harness
