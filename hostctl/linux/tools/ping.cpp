// SPDX-License-Identifier: MIT
#include "linux/tools/ping.h"

#include <arpa/inet.h>

#include <algorithm>

#include "linux/run_program.h"

namespace HostLinux {

using HostSeam::ToolAnswer;

namespace {

constexpr const char* kPing = "/bin/ping";
constexpr int kMostEchoes = 20;
constexpr std::size_t kLongestName = 253;
constexpr std::size_t kLongestZone = 15;
/// For the name to be resolved, and the last echo to come back.
constexpr std::chrono::seconds kBesides{12};
constexpr int kTrouble = 2;

constexpr std::string_view kPlain =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz._-";

bool isPlain(std::string_view text, std::size_t longest) {
  return !text.empty() && text.size() <= longest && text.front() != '-' &&
         text.find_first_not_of(kPlain) == std::string_view::npos;
}

bool isIpv6(std::string_view text) {
  const auto zone = text.find('%');
  in6_addr address{};
  return inet_pton(AF_INET6, std::string(text.substr(0, zone)).c_str(), &address) == 1 &&
         (zone == std::string_view::npos || isPlain(text.substr(zone + 1), kLongestZone));
}

}  // namespace

bool isAddressOrName(std::string_view text) {
  return isPlain(text, kLongestName) || isIpv6(text);
}

ToolAnswer ping(const std::string& address, int count) {
  if (!isAddressOrName(address)) return {kTrouble, "", "not an address or a host name\n"};
  if (count < 1 || count > kMostEchoes) return {kTrouble, "", "between 1 and 20 echoes\n"};
  const std::vector<std::string> arguments = {"ping", "-n", "-c", std::to_string(count),
                                              "-W",   "2",  "--", address};
  const auto result = runProgram({kPing, arguments}, std::chrono::seconds(count) + kBesides);
  if (result.status < 0) return {kTrouble, "", result.output + "\n"};
  return {result.status, result.output, ""};
}

}  // namespace HostLinux
