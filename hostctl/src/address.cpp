// SPDX-License-Identifier: MIT
#include "hostctl/network/address.h"

#include <arpa/inet.h>

namespace HostCtl::Network {

std::optional<Ipv4Address> Ipv4Address::FromString(const std::string& text) {
  in_addr raw{};
  if (inet_pton(AF_INET, text.c_str(), &raw) != 1) return std::nullopt;
  return Ipv4Address(ntohl(raw.s_addr));
}

Ipv4Address Ipv4Address::FromPrefix(int bits) {
  return Ipv4Address(bits <= 0 ? 0 : ~std::uint32_t{0} << (32 - bits));
}

std::string Ipv4Address::GetStringAddress() const {
  const in_addr raw{htonl(value_)};
  char text[INET_ADDRSTRLEN];
  return inet_ntop(AF_INET, &raw, text, sizeof text);
}

std::optional<Ipv6Address> Ipv6Address::FromString(const std::string& text) {
  Bytes bytes;
  if (inet_pton(AF_INET6, text.c_str(), bytes.data()) != 1) return std::nullopt;
  return Ipv6Address(bytes);
}

std::string Ipv6Address::GetStringAddress() const {
  char text[INET6_ADDRSTRLEN];
  return inet_ntop(AF_INET6, bytes_.data(), text, sizeof text);
}

std::string toString(const IpAddress& address) {
  return std::visit([](const auto& one) { return one.GetStringAddress(); }, address);
}

std::optional<IpAddress> parseIpAddress(const std::string& text) {
  if (const auto ipv4 = Ipv4Address::FromString(text)) return IpAddress(*ipv4);
  if (const auto ipv6 = Ipv6Address::FromString(text)) return IpAddress(*ipv6);
  return std::nullopt;
}

}  // namespace HostCtl::Network
