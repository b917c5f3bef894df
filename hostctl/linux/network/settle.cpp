// SPDX-License-Identifier: MIT
#include "linux/network/settle.h"

#include <syslog.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "hostctl/lib/exception.h"
#include "linux/network/foreign.h"
#include "linux/network/networkd_bus.h"
#include "linux/network/wait.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kCarrierWithin{3};
constexpr std::chrono::seconds kBegunWithin{1};
constexpr std::chrono::seconds kFinishedWithin{2};
constexpr std::chrono::seconds kBetweenAttempts{1};

/// Where networkd writes down how the interface is.
std::string statePath(const Files& files, const std::string& interface) {
  return "/run/systemd/netif/links/" + std::to_string(indexOf(files, interface));
}

std::filesystem::file_time_type lastSaid(const Files& files, const std::string& interface) {
  std::error_code error;
  return std::filesystem::last_write_time(files.Path(statePath(files, interface)), error);
}

/// What it writes there of one of its states; nothing for an interface that it does not know.
std::optional<std::string> stateOf(const Files& files, const std::string& interface,
                                   const std::string& which) {
  const auto states = files.Read(statePath(files, interface));
  if (!states) return std::nullopt;
  return valueOf(parseAssignments(*states), which);
}

/// Has networkd try an interface again that it gave up, now and then.
class SecondAttempts {
 public:
  SecondAttempts(const Files& files, const std::string& operation, const std::string& interface)
      : files_(files), operation_(operation), interface_(interface) {}

  void Make() {
    const bool givenUp = stateOf(files_, interface_, "ADMIN_STATE") == "failed";
    if (!givenUp || Clock::now() < notBefore_) return;
    notBefore_ = Clock::now() + kBetweenAttempts;
    try {
      reconfigureLink(operation_, interface_, indexOf(files_, interface_));
    } catch (const HostCtlException& error) {
      syslog(LOG_USER | LOG_ERR, "%s", error.what());
    }
  }

 private:
  const Files& files_;
  const std::string& operation_;
  const std::string& interface_;
  Clock::time_point notBefore_;
};

}  // namespace

void waitInForce(const Files& files, const std::string& operation, const std::string& interface,
                 const std::string& what, const IsInForce& isInForce) {
  const auto start = Clock::now();
  SecondAttempts attempts(files, operation, interface);
  const auto isSo = [&] {
    const NetworkTables tables = readNetworkTables(operation);
    const auto link = std::find_if(tables.links.begin(), tables.links.end(),
                                   [&](const LinkRow& one) { return one.name == interface; });
    if (link == tables.links.end())
      throw HostCtlException(operation, interface, "there is no such interface");
    const bool unplugged = !link->carrier && Clock::now() - start > kCarrierWithin;
    if (unplugged || isInForce(tables, *link)) return true;
    attempts.Make();
    return false;
  };
  if (!waitFor(kInForceWithin, isSo))
    throw HostCtlException(operation, interface,
                           "systemd-networkd did not set " + what + " within 10 seconds");
}

void reloadFor(const Files& files, const std::string& operation, const std::string& interface) {
  const auto before = lastSaid(files, interface);
  reloadNetworkd(operation, interface);
  waitFor(kBegunWithin, [&] { return lastSaid(files, interface) != before; });
}

void letNetworkdFinish(const Files& files, const std::string& interface) {
  waitFor(kFinishedWithin, [&] {
    const auto state = stateOf(files, interface, "ADMIN_STATE");
    return !state || *state == "configured";
  });
}

void letNetworkdSeeItDown(const Files& files, const std::string& interface) {
  waitFor(kFinishedWithin, [&] {
    const auto state = stateOf(files, interface, "CARRIER_STATE");
    return !state || *state == "off";
  });
}

OwnFiles::TakeOver reloadAndCheck(const Files& files, const std::string& operation,
                                  const std::string& interface, std::function<void()> check) {
  return [=, &files]() mutable {
    const auto once = std::exchange(check, nullptr);
    reloadFor(files, operation, interface);
    if (once) once();
  };
}

}  // namespace HostLinux
