// SPDX-License-Identifier: MIT
#include <poll.h>
#include <sys/inotify.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <exception>
#include <system_error>
#include <thread>

#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"
#include "linux/network/name_settings.h"

namespace {

using HostCtl::Lib::Descriptor;

constexpr const char* kStates = "/run/systemd/netif/links";
/// networkd says one thing in several steps.
constexpr std::chrono::milliseconds kSaidWithin{200};
constexpr std::chrono::milliseconds kAgainAfter{60'000};

[[noreturn]] void fail() {
  throw std::system_error(errno, std::generic_category(), kStates);
}

/// Once more where that is watched already; fails when the folder is gone.
void watchStates(const Descriptor& watch) {
  if (inotify_add_watch(watch.Get(), kStates, IN_MOVED_TO | IN_ONLYDIR) < 0) fail();
}

/// Waits until networkd has written a state, and no longer than `limit` where that is not negative.
void waitForStates(const Descriptor& watch, int limit) {
  pollfd waited{watch.Get(), POLLIN, 0};
  if (poll(&waited, 1, limit) == 0) return;
  std::this_thread::sleep_for(kSaidWithin);
  char events[16384];
  if (read(watch.Get(), events, sizeof events) < 0 && errno != EAGAIN) fail();
  watchStates(watch);
}

bool follow() try {
  HostLinux::followLeasedServers(HostLinux::Files());
  return true;
} catch (const HostCtl::Lib::HostCtlException& error) {
  std::fprintf(stderr, "kiva-name-servers: %s\n", error.what());
  return false;
}

}  // namespace

/// kiva-name-servers: runs beside systemd-networkd by its unit, which keeps its output. Watches
/// before it looks, so that no lease is missed.
int main() try {
  const Descriptor watch(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  if (!watch) fail();
  watchStates(watch);
  for (;;) waitForStates(watch, follow() ? -1 : static_cast<int>(kAgainAfter.count()));
} catch (const std::exception& error) {
  std::fprintf(stderr, "kiva-name-servers: %s\n", error.what());
  return 1;
}
