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
      : window_(window), idle_(timeout), dimAt_(keyWait().source->Now() + kDimAfter) {}

  int NextKey() {
    for (;;) {
      const Time now = keyWait().source->Now();
      idle_.Check(now);
      if (!dimmed_ && now > dimAt_) Dim();
      const int input = WaitFrom(now);
      if (input >= 0 && input != Key::kResize) return Wake(), input;
      dispatchInput(input);
    }
  }

 private:
  void Dim() {
    window_.SetActive(false);
    window_.Refresh();
    dimmed_ = true;
  }

  int WaitFrom(Time now) {
    if (dimmed_ && !idle_.End()) return keyWait().source->Wait(nullptr);
    // One tick past the point: the point itself has not passed yet.
    const Time limit = (dimmed_ ? *idle_.End() : dimAt_) - now + Time(1);
    return keyWait().source->Wait(&limit);
  }

  void Wake() {
    if (!dimmed_) return;
    repaintScreen();
    window_.SetActive(true);
    window_.Refresh();
  }

  Window& window_;
  const IdleDeadline idle_;
  const Time dimAt_;
  bool dimmed_ = false;
};

}  // namespace

KeyWait& keyWait() {
  static KeyWait one{.source = &terminalSource()};
  return one;
}

IdleDeadline::IdleDeadline(IdleTimeout timeout) {
  const unsigned seconds = keyWait().idleTimeoutSeconds;
  if (timeout == IdleTimeout::Applies && seconds != 0)
    end_ = keyWait().source->Now() + std::chrono::seconds(std::max(seconds, kShortestTimeout));
}

void IdleDeadline::Check(Time now) const {
  if (!end_ || now <= *end_) return;
  keyWait().currentWindow = nullptr;
  throw KivaTimeout{};
}

int getKey(Window& window, IdleTimeout timeout) {
  return Waiting(window, timeout).NextKey();
}

void waitForEnter(Window& window, IdleTimeout timeout) {
  while (getKey(window, timeout) != Key::kEnter) {
  }
}

bool waitForConfirmation(Window& window, int key) {
  for (;;) {
    const int pressed = getKey(window);
    if (pressed == key || pressed == Key::kEscape) return pressed == key;
  }
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
