// SPDX-License-Identifier: MIT
#include "linux/network/ovsdb.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "hostctl/lib/descriptor.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;
using nlohmann::json;

namespace {

constexpr const char* kSocket = "/run/openvswitch/db.sock";
constexpr std::chrono::milliseconds kAnswerWithin{250};
constexpr std::chrono::seconds kGoodFor{5};
constexpr std::size_t kMostBytes = 4 << 20;
constexpr const char* kQuestion =
    R"({"id":0,"method":"transact","params":["Open_vSwitch",)"
    R"({"op":"select","table":"Bridge","where":[],"columns":["name","ports","controller"]},)"
    R"({"op":"select","table":"Port","where":[],"columns":["_uuid","interfaces"]},)"
    R"({"op":"select","table":"Interface","where":[],"columns":["_uuid","name"]}]})";

/// The identifiers in a column: ["uuid", ID], or ["set", [["uuid", ID], …]].
std::set<std::string> idsIn(const json& column) {
  if (column.at(0) == "uuid") return {column.at(1).get<std::string>()};
  std::set<std::string> ids;
  for (const json& one : column.at(1)) ids.insert(one.at(1).get<std::string>());
  return ids;
}

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
std::string ask(const std::string& path) {
  const auto end = OvsDatabase::Clock::now() + kAnswerWithin;
  const Descriptor socket = connectTo(path);
  const std::string_view question = kQuestion;
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

std::optional<OvsInterfaces> ovsInterfacesIn(const std::string& answer) try {
  const json tables = json::parse(answer).at("result");
  std::map<std::string, std::string> bridgeOfPort, bridgeOfInterface;
  for (const json& bridge : tables.at(0).at("rows")) {
    const bool controlled = !idsIn(bridge.at("controller")).empty();
    for (const auto& port : idsIn(bridge.at("ports")))
      bridgeOfPort[port] = controlled ? bridge.at("name").get<std::string>() : "";
  }
  for (const json& port : tables.at(1).at("rows"))
    for (const auto& interface : idsIn(port.at("interfaces")))
      bridgeOfInterface[interface] = bridgeOfPort[port.at("_uuid").at(1).get<std::string>()];
  OvsInterfaces found;
  for (const json& interface : tables.at(2).at("rows"))
    found[interface.at("name").get<std::string>()] =
        bridgeOfInterface[interface.at("_uuid").at(1).get<std::string>()];
  return found;
} catch (const json::exception&) {
  return std::nullopt;
}

const std::optional<OvsInterfaces>& OvsDatabase::Read(const Files& files, Clock::time_point now) {
  if (now < notBefore_) return last_;
  last_.reset();
  if (!files.Exists(kSocket)) return last_;
  last_ = ovsInterfacesIn(ask(files.Path(kSocket)));
  notBefore_ = now + kGoodFor;
  if (!last_) syslog(LOG_USER | LOG_INFO, "Open vSwitch's database does not answer");
  return last_;
}

}  // namespace HostLinux
