// SPDX-License-Identifier: MIT
#pragma once

#include <sys/time.h>

#include <chrono>
#include <optional>

namespace Kiva {

class Window;

/// Thrown by the key wait when nobody has pressed a key for the idle time; ends the operator's
/// session.
struct KivaTimeout {};

/// What waitForInput returns besides keys, which are 0 and above.
namespace Input {
inline constexpr int kNothing = -1;
inline constexpr int kTimeLimit = -2;
inline constexpr int kSmartCard = -3;
inline constexpr int kStopRequest = -4;
inline constexpr int kResized = -5;
inline constexpr int kStop = -6;
}  // namespace Input

/// Where the key wait gets time and input from. The real one reads the clock, the terminal and the
/// event pipe; tests and rehearsals put another in its place.
class InputSource {
 public:
  using Time = std::chrono::microseconds;
  virtual ~InputSource() = default;
  /// Time since some fixed point; never goes back.
  virtual Time Now() = 0;
  /// One wait of at most `limit`, without end when null: a key or one of Input's codes.
  virtual int Wait(const Time* limit) = 0;
};

/// The key wait's own state. One for the process, used by the user-interface thread only.
struct KeyWait {
  InputSource* source = nullptr;
  /// The window or dialog in the foreground; the run loop keeps it.
  Window* currentWindow = nullptr;
  /// Seconds without a key after which a session ends; 0 for never.
  unsigned idleTimeoutSeconds = 600;
  /// How many times as fast as the world the real source's clock runs; for rehearsing time-outs.
  int clockSpeed = 1;
};

KeyWait& keyWait();

/// One poll of terminal and event pipe, after sending to the terminal what windows drew: a key, or
/// one of Input's codes. Null waits without end. The terminal wins when both are ready. Ends the
/// process when the terminal has gone away.
int waitForInput(const timeval* limit);

enum class IdleTimeout { Applies, Ignored };

/// The end of the idle time, counted from when this was made.
class IdleDeadline {
 public:
  explicit IdleDeadline(IdleTimeout timeout = IdleTimeout::Applies);
  /// Throws KivaTimeout once the end has passed.
  void Check(InputSource::Time now) const;
  /// Absent where a session may stay idle for ever.
  const std::optional<InputSource::Time>& End() const { return end_; }

 private:
  std::optional<InputSource::Time> end_;
};

/// The next key for `window`, which is in the foreground. Dims it after a minute without keys; the
/// key that wakes it counts. Throws KivaTimeout; ends the process on a stop signal or a resize.
int getKey(Window& window, IdleTimeout timeout = IdleTimeout::Applies);

/// Waits for Enter; every other key is ignored.
void waitForEnter(Window& window, IdleTimeout timeout = IdleTimeout::Applies);

/// Waits for `key` (true) or Escape (false); every other key is ignored.
bool waitForConfirmation(Window& window, int key);

/// Acts on one of Input's codes as the key wait does: a smart card, a stop, a resize.
void dispatchInput(int input);

/// Waits for the end of the process, which the host or a signal brings: reads no keys, and a stop
/// request has no session to wait for.
[[noreturn]] void waitForEnd();

/// Reads the idle time-out setting again.
void reloadIdleTimeout();

/// Notes that an operator's session begins, with the idle time-out as it is set now, or ends.
void setSessionActive(bool active);

}  // namespace Kiva
