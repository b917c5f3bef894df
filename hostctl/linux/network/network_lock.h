// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <optional>
#include <string>
#include <utility>

#include "hostctl/lib/descriptor.h"

namespace HostLinux {

/// Keeps this thread from being ended half way: what would stop the program (SIGINT, SIGQUIT,
/// SIGTERM, SIGHUP) waits until this has gone, on the thread that made it. SIGALRM, by which a tool
/// bounds its time, is taken away: what was done late was done. What is done meanwhile has bounds
/// of its own. The console, which hears of such signals at its key wait, has them there as before.
class StopsPutOff {
 public:
  StopsPutOff();
  StopsPutOff(StopsPutOff&& other) noexcept : before_(std::exchange(other.before_, std::nullopt)) {}
  StopsPutOff& operator=(StopsPutOff&&) = delete;
  ~StopsPutOff();

 private:
  std::optional<sigset_t> before_;
};

/// The sole right to change the network, for one that is not stopped before the network is as its
/// files say or as it was. OwnFiles gives it.
class NetworkLock {
 public:
  explicit NetworkLock(HostCtl::Lib::Descriptor locked) : locked_(std::move(locked)) {}

  /// What a holder has set for the next one to know, should it be killed. Nothing of it outlives a
  /// restart of the machine, and where it cannot be written that is logged.
  std::string Note() const;
  void SetNote(const std::string& note) const;

 private:
  StopsPutOff stopsPutOff_;
  HostCtl::Lib::Descriptor locked_;
};

}  // namespace HostLinux
