// SPDX-License-Identifier: MIT
#include "network/network_check.h"

#include <chrono>
#include <exception>
#include <system_error>
#include <thread>

#include "core/log.h"
#include "network/hosts_backup.h"
#include "tarnctl/util/exec.h"

namespace Kiva {

namespace {

bool ranWell(const NetworkCheck::Work& work, const std::stop_token& abandoned) noexcept try {
  return work(abandoned);
} catch (const std::exception& exception) {
  logError("%s", exception.what());
  return false;
}

}  // namespace

// The thread inherits the mask that leaves the handled signals to their own thread.
NetworkCheck::NetworkCheck(Work work) {
  std::promise<bool> result;
  running_ = result.get_future();
  try {
    std::thread([work = std::move(work), abandoned = abandoned_.get_token(),
                 result = std::move(result)]() mutable {
      result.set_value(ranWell(work, abandoned));
    }).detach();
  } catch (const std::system_error& error) {
    running_ = {};
    logError("Failed to create network test thread: %s", error.code().message().c_str());
  }
}

std::optional<bool> NetworkCheck::Result() {
  if (running_.valid()) {
    if (running_.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
      return std::nullopt;
    succeeded_ = running_.get();
  }
  return succeeded_;
}

NetworkCheck::Work pingOf(const std::string& address) {
  return [line = "/bin/tarnping -c 3 " + address](const std::stop_token&) {
    return TarnCtl::Util::TarnCtl_Exec(line, false, true, false) == 0;
  };
}

NetworkCheck::Work resolutionOf(const std::string& name) {
  return [name](const std::stop_token& abandoned) { return resolveByServers(name, abandoned); };
}

}  // namespace Kiva
