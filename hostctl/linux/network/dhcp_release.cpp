// SPDX-License-Identifier: MIT
#include "linux/network/dhcp_release.h"

#include <arpa/inet.h>
#include <sys/random.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"
#include "linux/network/wait.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;
using HostCtl::Lib::HostCtlException;
using HostCtl::Network::Ipv4Address;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint16_t kServerPort = 67, kClientPort = 68;
constexpr std::chrono::milliseconds kLeavesWithin{500};

constexpr std::size_t kTransaction = 4, kOwnAddress = 12, kHardware = 28, kOptions = 236;
constexpr std::uint8_t kRequest = 1, kEthernet = 1, kRelease = 7;
constexpr std::uint8_t kMessageType = 53, kServerIdentifier = 54, kClientIdentifier = 61,
                       kEnd = 255;
constexpr std::uint8_t kCookie[] = {99, 130, 83, 99};

Bytes inNetworkOrder(std::uint32_t value) {
  return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
          static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

template <class Range>
void put(Bytes& message, std::size_t at, const Range& bytes) {
  std::copy(std::begin(bytes), std::end(bytes), message.begin() + static_cast<std::ptrdiff_t>(at));
}

void addOption(Bytes& message, std::uint8_t code, const Bytes& value) {
  message.push_back(code);
  message.push_back(static_cast<std::uint8_t>(value.size()));
  message.insert(message.end(), value.begin(), value.end());
}

/// Nothing for what is no run of pairs of hexadecimal digits that an option can hold.
std::optional<Bytes> parseHex(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  Bytes bytes;
  if (text.size() % 2 != 0 || text.size() > 2 * 255) return std::nullopt;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    const auto high = kDigits.find(text[i]), low = kDigits.find(text[i + 1]);
    if (high == kDigits.npos || low == kDigits.npos) return std::nullopt;
    bytes.push_back(static_cast<std::uint8_t>(high << 4 | low));
  }
  return bytes;
}

sockaddr_in socketAddress(Ipv4Address address, std::uint16_t port) {
  sockaddr_in result{};
  result.sin_family = AF_INET;
  result.sin_port = htons(port);
  result.sin_addr.s_addr = htonl(address.GetValue());
  return result;
}

/// Beside networkd's own socket, which shares the port.
Descriptor openSocket(const std::string& interface, Ipv4Address from) {
  Descriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  const int yes = 1;
  const auto size = static_cast<socklen_t>(interface.size());
  const sockaddr_in own = socketAddress(from, kClientPort);
  const bool ready =
      socket && setsockopt(socket.Get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes) == 0 &&
      setsockopt(socket.Get(), SOL_SOCKET, SO_BINDTODEVICE, interface.data(), size) == 0 &&
      bind(socket.Get(), reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0;
  return ready ? std::move(socket) : Descriptor();
}

/// Whether a message sent on the link waits for the hardware address of the server, or of the
/// router to it; the table lists it at once, and as known (2) once it has answered.
bool hasLeft(const Files& files, const std::string& interface) {
  constexpr std::size_t kFlags = 2, kDevice = 5;
  const std::string table = files.Read("/proc/net/arp").value_or("");
  for (const std::string_view line : lines(table)) {
    const auto fields = words(line);
    if (fields.size() > kDevice && fields[kDevice] == interface && fields[kFlags] == "0x0")
      return false;
  }
  return true;
}

std::uint32_t randomNumber() {
  std::uint32_t number = 0;
  return getrandom(&number, sizeof number, GRND_NONBLOCK) == sizeof number ? number : 1;
}

}  // namespace

std::optional<DhcpLease> parseLease(std::string_view state) {
  const auto said = parseAssignments(state);
  const auto address = Ipv4Address::FromString(valueOf(said, "ADDRESS"));
  const auto server = Ipv4Address::FromString(valueOf(said, "SERVER_ADDRESS"));
  const auto clientId = parseHex(valueOf(said, "CLIENTID"));
  if (!address || !server || !clientId) return std::nullopt;
  return DhcpLease{*address, *server, *clientId};
}

std::vector<std::uint8_t> releaseMessage(const DhcpLease& lease, const MacAddress& hardware,
                                         std::uint32_t transaction) {
  Bytes message(kOptions);
  message[0] = kRequest;
  message[1] = kEthernet;
  message[2] = static_cast<std::uint8_t>(hardware.GetBytes().size());
  put(message, kTransaction, inNetworkOrder(transaction));
  put(message, kOwnAddress, inNetworkOrder(lease.address.GetValue()));
  put(message, kHardware, hardware.GetBytes());
  message.insert(message.end(), std::begin(kCookie), std::end(kCookie));
  addOption(message, kMessageType, {kRelease});
  addOption(message, kServerIdentifier, inNetworkOrder(lease.server.GetValue()));
  if (!lease.clientId.empty()) addOption(message, kClientIdentifier, lease.clientId);
  message.push_back(kEnd);
  return message;
}

void sendRelease(const Files& files, const std::string& operation, const std::string& interface,
                 const DhcpLease& lease, const MacAddress& hardware) {
  const Bytes message = releaseMessage(lease, hardware, randomNumber());
  const Descriptor socket = openSocket(interface, lease.address);
  const sockaddr_in server = socketAddress(lease.server, kServerPort);
  if (!socket || sendto(socket.Get(), message.data(), message.size(), 0,
                        reinterpret_cast<const sockaddr*>(&server), sizeof server) < 0)
    throw HostCtlException(operation, interface, std::strerror(errno));
  waitFor(kLeavesWithin, [&] { return hasLeft(files, interface); });
}

}  // namespace HostLinux
