// SPDX-License-Identifier: MIT
#include "linux/network/settle.h"

#include <algorithm>
#include <utility>

#include "hostctl/lib/exception.h"
#include "linux/network/networkd_bus.h"
#include "linux/network/wait.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kCarrierWithin{3};

}  // namespace

void waitInForce(const std::string& operation, const std::string& interface,
                 const std::string& what, const IsInForce& isInForce) {
  const auto start = Clock::now();
  const auto isSo = [&] {
    const NetworkTables tables = readNetworkTables(operation);
    const auto link = std::find_if(tables.links.begin(), tables.links.end(),
                                   [&](const LinkRow& one) { return one.name == interface; });
    if (link == tables.links.end())
      throw HostCtlException(operation, interface, "there is no such interface");
    const bool unplugged = !link->carrier && Clock::now() - start > kCarrierWithin;
    return unplugged || isInForce(tables, *link);
  };
  if (!waitFor(kInForceWithin, isSo))
    throw HostCtlException(operation, interface,
                           "systemd-networkd did not set " + what + " within 10 seconds");
}

OwnFiles::TakeOver reloadAndCheck(const std::string& operation, const std::string& interface,
                                  std::function<void()> check) {
  return [=]() mutable {
    reloadNetworkd(operation, interface);
    if (const auto once = std::exchange(check, nullptr)) once();
  };
}

}  // namespace HostLinux
