// SPDX-License-Identifier: MIT
#include "core/input.h"

#include <curses.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <optional>

#include "core/keys.h"
#include "core/log.h"
#include "core/screen.h"
#include "core/signals.h"

namespace Kiva {

namespace {

int pollTimeout(const timeval* limit) {
  if (!limit) return -1;
  constexpr long kLongest = std::numeric_limits<int>::max();
  if (limit->tv_sec >= kLongest / 1000) return kLongest;
  return static_cast<int>(std::max(0L, limit->tv_sec * 1000 + limit->tv_usec / 1000));
}

std::optional<winsize> terminalSize() {
  winsize size{};
  if (ioctl(STDIN_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0)
    return std::nullopt;
  return size;
}

int readKey() {
  wtimeout(stdscr, 0);
  const int key = wgetch(stdscr);
  wtimeout(stdscr, -1);
  if (key == ERR) return Input::kNothing;
  return key == Key::kKeypadEnter ? Key::kEnter : key;
}

// A terminal that stays readable and has no byte to give is at its end.
bool terminalGone() {
  pollfd terminal{STDIN_FILENO, POLLIN, 0};
  if (poll(&terminal, 1, 0) <= 0) return false;
  if (!(terminal.revents & POLLIN)) return true;
  int waiting = 0;
  return ioctl(STDIN_FILENO, FIONREAD, &waiting) != 0 || waiting == 0;
}

int readTerminal() {
  const int key = readKey();
  if (key == Input::kNothing && terminalGone()) std::exit(0);
  return key;
}

class TerminalSource : public InputSource {
 public:
  Time Now() override {
    const auto real = std::chrono::steady_clock::now() - start_;
    return std::chrono::duration_cast<Time>(real) * keyWait().clockSpeed;
  }

  int Wait(const Time* limit) override {
    if (!limit) return waitForInput(nullptr);
    // Rounded up to poll's milliseconds: a wait that ends early would be repeated without a pause.
    const auto left = std::max(Time(0), *limit / keyWait().clockSpeed) + Time(999);
    const timeval value{.tv_sec = left.count() / 1000000, .tv_usec = left.count() % 1000000};
    return waitForInput(&value);
  }

 private:
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

int waitForInput(const timeval* limit) {
  updateScreen();
  // Curses may hold a key that it read behind an Escape; poll would not see it.
  if (const int key = readKey(); key != Input::kNothing) return key;
  pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {eventPipe(), POLLIN, 0}};
  const int ready = poll(sources, 2, pollTimeout(limit));
  if (ready == 0) return Input::kTimeLimit;
  if (ready < 0) return logErrno("poll() failed"), Input::kNothing;
  if (sources[0].revents) return readTerminal();
  return readEvent();
}

int readEvent() {
  unsigned char byte = 0;
  while (read(eventPipe(), &byte, 1) < 1 && errno == EINTR) {
  }
  switch (static_cast<EventByte>(byte)) {
    case EventByte::SmartCard:
      return Input::kSmartCard;
    case EventByte::StopRequest:
      return Input::kStopRequest;
    case EventByte::Resize:
      return Input::kResized;
    case EventByte::Stop:
      return Input::kStop;
  }
  return Input::kNothing;
}

int waitForEvent() {
  pollfd sources[] = {{STDIN_FILENO, 0, 0}, {eventPipe(), POLLIN, 0}};
  if (poll(sources, 2, -1) < 0) return Input::kNothing;
  if (sources[0].revents) std::exit(0);
  return readEvent();
}

InputSource& terminalSource() {
  static TerminalSource one;
  return one;
}

bool sizeChanged() {
  const auto size = terminalSize();
  return size && (size->ws_row != LINES || size->ws_col != COLS);
}

void handleResize() {
  const auto size = terminalSize();
  if (!size) return;
  resizeterm(size->ws_row, size->ws_col);
  logInfo("Resized window to %dx%d", size->ws_col, size->ws_row);
  refresh();
}

}  // namespace Kiva
