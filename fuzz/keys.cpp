// SPDX-License-Identifier: MIT
// Any bytes typed at the real key wait, through a pseudo-terminal: each comes out as a key code or
// as nothing, all of them are taken in, and the wait comes to its end.
#include <fcntl.h>
#include <poll.h>
#include <sys/time.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "core/key_wait.h"
#include "core/screen.h"
#include "hostseam/driver.h"
#include "linux/platform.h"

namespace {

constexpr std::size_t kMostTypeAhead = 1024;  // less than a terminal's input queue holds
// Behind curses' own codes (to 0777) come those of sequences that only this terminal's description
// knows, a few dozen of them.
constexpr int kLargestKey = 01777;

int master = -1;

class SilentPlatform : public HostLinux::LinuxPlatform {
  void Log(int, const std::string&) override {}
};

void require(bool isTrue) {
  if (!isTrue) std::abort();
}

/// The terminal's own control characters are off: a fuzzer would stop its own output with them.
void openTerminal() {
  master = posix_openpt(O_RDWR | O_NOCTTY);
  require(grantpt(master) == 0 && unlockpt(master) == 0);
  const int slave = open(ptsname(master), O_RDWR | O_NOCTTY);
  termios attributes{};
  require(tcgetattr(slave, &attributes) == 0);
  attributes.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF);
  attributes.c_lflag &= ~static_cast<tcflag_t>(ISIG | IEXTEN);
  require(tcsetattr(slave, TCSANOW, &attributes) == 0);
  require(dup2(slave, STDIN_FILENO) == STDIN_FILENO && dup2(slave, STDOUT_FILENO) >= 0);
}

void discardOutput() {
  char bytes[4096];
  for (pollfd polled{master, POLLIN, 0}; poll(&polled, 1, 0) > 0;)
    if (read(master, bytes, sizeof bytes) <= 0) return;
}

/// Takes keys until none comes any more; a byte gives at most one key.
void takeKeys(std::size_t typed) {
  const timeval limit{.tv_sec = 0, .tv_usec = 3000};
  for (std::size_t i = 0; i <= typed; ++i) {
    const int key = Kiva::waitForInput(&limit);
    if (key == Kiva::Input::kTimeLimit) return;
    require(key >= Kiva::Input::kNothing && key <= kLargestKey);
    if (i % 64 == 0) discardOutput();
  }
  require(Kiva::waitForInput(&limit) == Kiva::Input::kTimeLimit);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The fuzzer's own alarm interrupts a wait now and then, which the wait logs.
  HostSeam::useHost(std::make_unique<SilentPlatform>(), nullptr);
  openTerminal();
  setenv("TERM", "xterm-256color", 1);
  setenv("ESCDELAY", "1", 1);
  Kiva::startScreen();
  discardOutput();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  while (size > 0) {
    const std::size_t part = std::min(size, kMostTypeAhead);
    require(write(master, data, part) == static_cast<ssize_t>(part));
    takeKeys(part);
    data += part;
    size -= part;
  }
  return 0;
}
