// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "harness/child.h"
#include "harness/keys.h"
#include "harness/screen.h"

namespace Harness {

/// A wait that did not come true; what() holds the screen as it was then.
class WaitFailed : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A program on a terminal, seen and typed at as an operator does. Tests never sleep: `Press` and
/// `Type` return when the program has taken the keys in, has painted what it had to paint and waits
/// for the next key. Where a screen passes by itself or a key starts something long, use `Send` and
/// `WaitForPassing`. Every wait throws WaitFailed when its (generous) deadline is over.
class Console {
 public:
  using Milliseconds = std::chrono::milliseconds;

  virtual ~Console() = default;
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  /// The screen as it is now.
  virtual Screen Look() = 0;
  /// Types bytes without waiting for anything.
  virtual void Send(std::string_view bytes) = 0;

  /// Presses a key by its name (see keyBytes), `times` times, one after the other.
  void Press(std::string_view key, int times = 1);
  /// Types a text in one go.
  void Type(std::string_view text);
  /// Takes the steps of an operator (harness/steps.h).
  void Do(const std::vector<std::string>& steps);
  /// Chooses the byte sequences that `Press` sends.
  void UseKeys(KeyFamily family) { family_ = family; }

  /// Waits until the program waits for a key with everything painted, or has ended.
  void Settle();
  /// Waits until a text stands on the settled screen.
  Screen WaitFor(std::string_view text);
  /// Waits until a text is no longer on the settled screen.
  Screen WaitForGone(std::string_view text);
  /// Waits until a text is on the screen, whatever the program is doing.
  Screen WaitForPassing(std::string_view text);
  /// Waits until `isTrue` holds; `what` says in words what it was, for the message.
  Screen WaitUntil(const std::function<bool(const Screen&)>& isTrue, std::string_view what);
  /// Waits until the program has ended: its exit status, or minus the signal that killed it.
  int WaitForExit();

  pid_t Pid() const { return child_.Pid(); }
  void Signal(int number) const { child_.Signal(number); }
  void SetDeadline(Milliseconds deadline) { deadline_ = deadline; }

 protected:
  explicit Console(Child child) : child_(std::move(child)) {}

  /// Takes in what the program writes; returns at the first output or after `limit`.
  virtual void Pump(Milliseconds limit) = 0;
  /// Takes in everything that the program has written up to now.
  virtual void Drain() = 0;
  /// Whether typed bytes are still waiting to be read.
  virtual bool HasTypeAhead() = 0;

  Child child_;

 private:
  bool IsSettled();
  void SendAndSettle(std::string_view bytes);
  bool Reached(const std::function<bool()>& isTrue);
  [[noreturn]] void Fail(std::string_view what);

  KeyFamily family_ = KeyFamily::kXterm;
  Milliseconds deadline_{30000};
};

}  // namespace Harness
