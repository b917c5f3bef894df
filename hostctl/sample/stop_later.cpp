// SPDX-License-Identifier: MIT
#include "sample/stop_later.h"

#include <poll.h>
#include <unistd.h>

#include <csignal>

// Debian 12's header does not say itself that these are functions of C.
extern "C" {
#include <sys/pidfd.h>
}

#include "hostctl/lib/descriptor.h"

namespace HostSample {

using HostCtl::Lib::Descriptor;

namespace {

void closeAllBut(int kept) {
  const auto number = static_cast<unsigned>(kept);
  if (number > 0) close_range(0, number - 1, 0);
  close_range(number + 1, ~0U, 0);
}

[[noreturn]] void stopAfter(int process, std::chrono::milliseconds delay) {
  setsid();
  closeAllBut(process);
  pollfd ended{process, POLLIN, 0};
  if (poll(&ended, 1, static_cast<int>(delay.count())) == 0)
    pidfd_send_signal(process, SIGTERM, nullptr, 0);
  _exit(0);
}

}  // namespace

void stopLater(pid_t process, std::chrono::milliseconds delay) {
  const Descriptor handle(pidfd_open(process, 0));
  if (handle && fork() == 0) stopAfter(handle.Get(), delay);
}

}  // namespace HostSample
