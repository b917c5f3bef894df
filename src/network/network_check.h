// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <future>
#include <optional>
#include <stop_token>
#include <string>

namespace Kiva {

/// One check of the network test, on a thread of its own that nobody joins: the program may leave
/// it behind, and may end while it runs. The thread owns all that it uses, touches no screen, and
/// leaves a result that only this object looks at; when this goes first, the check is abandoned.
class NetworkCheck {
 public:
  /// Whether the check succeeded. Told by the token that nobody waits any more; must not use
  /// anything that is destroyed at exit.
  using Work = std::function<bool(const std::stop_token& abandoned)>;

  /// A thread that cannot be had is a failed check.
  explicit NetworkCheck(Work work);
  ~NetworkCheck() { abandoned_.request_stop(); }
  NetworkCheck(const NetworkCheck&) = delete;
  NetworkCheck& operator=(const NetworkCheck&) = delete;

  /// Absent while the check runs.
  std::optional<bool> Result();

 private:
  std::stop_source abandoned_;
  std::future<bool> running_;
  bool succeeded_ = false;
};

/// Three pings of an address, which may have a zone and is an address: it becomes part of a shell's
/// line.
NetworkCheck::Work pingOf(const std::string& address);
/// A resolution by the host's name servers, whatever its hosts file says.
NetworkCheck::Work resolutionOf(const std::string& name);

}  // namespace Kiva
