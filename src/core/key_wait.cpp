// SPDX-License-Identifier: MIT
#include "core/key_wait.h"

#include <algorithm>
#include <cstdlib>

#include "core/idle_timeout.h"
#include "core/input.h"
#include "core/keys.h"
#include "core/log.h"
#include "core/screen.h"
#include "core/session.h"
#include "core/smart_card.h"
#include "core/window.h"

namespace Kiva {

namespace {

using Time = InputSource::Time;

constexpr Time kDimAfter = std::chrono::seconds(60);
constexpr unsigned kShortestTimeout = 60;

void notifySmartCard() {
  if (keyWait().currentWindow) keyWait().currentWindow->Notification();
  checkSmartCard();
}

/// One call of getKey: counts from the moment it was entered.
class Waiting {
 public:
  Waiting(Window& window, IdleTimeout timeout)
      : window_(window),
        timed_(timeout == IdleTimeout::Applies && keyWait().idleTimeoutSeconds != 0),
        start_(keyWait().source->Now()),
        dimAt_(start_ + kDimAfter),
        endAt_(start_ +
               std::chrono::seconds(std::max(keyWait().idleTimeoutSeconds, kShortestTimeout))) {}

  int NextKey() {
    for (;;) {
      const Time now = keyWait().source->Now();
      if (timed_ && now > endAt_) Expire();
      if (!dimmed_ && now > dimAt_) Dim();
      const int input = WaitFrom(now);
      if (input >= 0 && input != Key::kResize) return Wake(), input;
      dispatchInput(input);
    }
  }

 private:
  [[noreturn]] static void Expire() {
    keyWait().currentWindow = nullptr;
    throw KivaTimeout{};
  }

  void Dim() {
    window_.SetActive(false);
    window_.Refresh();
    dimmed_ = true;
  }

  int WaitFrom(Time now) {
    if (dimmed_ && !timed_) return keyWait().source->Wait(nullptr);
    // One tick past the point: the point itself has not passed yet.
    const Time limit = (dimmed_ ? endAt_ : dimAt_) - now + Time(1);
    return keyWait().source->Wait(&limit);
  }

  void Wake() {
    if (!dimmed_) return;
    repaintScreen();
    window_.SetActive(true);
    window_.Refresh();
  }

  Window& window_;
  const bool timed_;
  const Time start_;
  const Time dimAt_;
  const Time endAt_;
  bool dimmed_ = false;
};

}  // namespace

KeyWait& keyWait() {
  static KeyWait one{.source = &terminalSource()};
  return one;
}

int getKey(Window& window, IdleTimeout timeout) {
  return Waiting(window, timeout).NextKey();
}

void dispatchInput(int input) {
  switch (input) {
    case Input::kSmartCard:
      notifySmartCard();
      break;
    case Input::kStopRequest:
      if (!session().active) std::exit(0);
      session().stopPending = true;
      break;
    case Input::kResized:
    case Key::kResize:
      handleResize();
      std::exit(0);
    case Input::kStop:
      std::exit(0);
    default:
      break;
  }
}

void waitForEnd() {
  session().active = false;
  if (session().stopPending) std::exit(0);
  updateScreen();
  for (;;) dispatchInput(waitForEvent());
}

void reloadIdleTimeout() {
  keyWait().idleTimeoutSeconds = static_cast<unsigned>(readIdleTimeout());
}

void setSessionActive(bool active) {
  session().active = active;
  if (active) reloadIdleTimeout();
}

}  // namespace Kiva
