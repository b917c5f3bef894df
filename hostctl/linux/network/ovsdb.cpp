// SPDX-License-Identifier: MIT
#include "linux/network/ovsdb.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;
using nlohmann::json;

namespace {

constexpr const char* kSocket = "/run/openvswitch/db.sock";
constexpr std::chrono::milliseconds kAnswerWithin{250};
constexpr std::chrono::seconds kChangeWaits{5};
constexpr std::chrono::seconds kGoodFor{5};
constexpr std::size_t kMostBytes = 4 << 20;

Descriptor connectTo(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return Descriptor();
  std::copy(path.begin(), path.end(), address.sun_path);
  Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const auto* general = reinterpret_cast<const sockaddr*>(&address);
  if (!socket || connect(socket.Get(), general, sizeof address) != 0) return Descriptor();
  return socket;
}

bool waitFor(const Descriptor& socket, OvsDatabase::Clock::time_point end) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - OvsDatabase::Clock::now());
  pollfd ready{socket.Get(), POLLIN, 0};
  return left.count() > 0 && poll(&ready, 1, static_cast<int>(left.count())) > 0;
}

/// The whole answer, or what there is of it when the time is over.
std::string ask(const std::string& path, std::chrono::milliseconds limit) {
  const auto end = OvsDatabase::Clock::now() + limit;
  const Descriptor socket = connectTo(path);
  const std::string_view question = kOvsQuestion;
  std::string answer;
  if (!socket || send(socket.Get(), question.data(), question.size(), MSG_NOSIGNAL) !=
                     static_cast<ssize_t>(question.size()))
    return answer;
  char block[65536];
  while (answer.size() < kMostBytes && !json::accept(answer) && waitFor(socket, end)) {
    const ssize_t count = recv(socket.Get(), block, sizeof block, 0);
    if (count <= 0) break;
    answer.append(block, static_cast<std::size_t>(count));
  }
  return answer;
}

}  // namespace

std::optional<OvsBridges> askForOvsBridges(const Files& files) {
  if (!files.Exists(kSocket)) return std::nullopt;
  return ovsBridgesIn(ask(files.Path(kSocket), kAnswerWithin));
}

OvsBridges readOvsBridges(const Files& files, const std::string& operation) {
  if (!files.Exists(kSocket)) return {};
  if (auto bridges = ovsBridgesIn(ask(files.Path(kSocket), kChangeWaits)))
    return std::move(*bridges);
  throw HostCtl::Lib::HostCtlException(operation, "Open vSwitch", "its database does not answer");
}

const std::optional<OvsInterfaces>& OvsDatabase::Read(const Files& files, Clock::time_point now) {
  if (now < notBefore_) return last_;
  last_.reset();
  if (!files.Exists(kSocket)) return last_;
  if (const auto bridges = askForOvsBridges(files)) last_ = ovsInterfacesOf(*bridges);
  notBefore_ = now + kGoodFor;
  if (!last_) syslog(LOG_USER | LOG_INFO, "Open vSwitch's database does not answer");
  return last_;
}

}  // namespace HostLinux
