// SPDX-License-Identifier: MIT
#include "hostctl/network/address.h"

#include <arpa/inet.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <string_view>

namespace HostCtl::Network {

namespace {

constexpr std::size_t kLongestZone = 15;

// What an interface may be called.
bool isZone(std::string_view text) {
  constexpr std::string_view kMarks = "-_.:@";
  const auto fits = [&](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           kMarks.find(c) != kMarks.npos;
  };
  return !text.empty() && text.size() <= kLongestZone &&
         std::all_of(text.begin(), text.end(), fits);
}

std::optional<int> parsePrefix(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
  const bool whole = error == std::errc() && end == text.end() && text[0] != '-';
  return whole && value >= 1 && value <= 128 ? std::optional(value) : std::nullopt;
}

}  // namespace

std::optional<Ipv4Address> Ipv4Address::FromString(const std::string& text) {
  in_addr raw{};
  if (inet_pton(AF_INET, text.c_str(), &raw) != 1) return std::nullopt;
  return Ipv4Address(ntohl(raw.s_addr));
}

bool Ipv4Address::IsValidNetmask(Ipv4Address mask) {
  return !mask.IsEmpty() && mask == FromPrefix(mask.GetPrefix());
}

Ipv4Address Ipv4Address::FromPrefix(int bits) {
  return Ipv4Address(bits <= 0 ? 0 : ~std::uint32_t{0} << (32 - bits));
}

int Ipv4Address::GetPrefix() const {
  return std::countl_one(value_);
}

std::string Ipv4Address::GetStringAddress() const {
  const in_addr raw{htonl(value_)};
  char text[INET_ADDRSTRLEN];
  return inet_ntop(AF_INET, &raw, text, sizeof text);
}

std::optional<Ipv6Address> Ipv6Address::FromString(const std::string& text) {
  const auto percent = text.find('%');
  const std::string zone = percent == text.npos ? "" : text.substr(percent + 1);
  if (percent != text.npos && !isZone(zone)) return std::nullopt;
  Bytes bytes;
  if (inet_pton(AF_INET6, text.substr(0, percent).c_str(), bytes.data()) != 1) return std::nullopt;
  return Ipv6Address(bytes, zone);
}

std::string Ipv6Address::GetStringAddress() const {
  char text[INET6_ADDRSTRLEN];
  return inet_ntop(AF_INET6, bytes_.data(), text, sizeof text);
}

std::string Ipv6Address::GetScopedAddress() const {
  return zone_.empty() ? GetStringAddress() : GetStringAddress() + "%" + zone_;
}

std::optional<Ipv6Network> Ipv6Network::FromString(const std::string& text) {
  const auto slash = text.find('/');
  if (slash == text.npos || slash + 1 == text.size()) return std::nullopt;
  const auto address = Ipv6Address::FromString(text.substr(0, slash));
  const auto prefix = parsePrefix(std::string_view(text).substr(slash + 1));
  if (!address || !prefix) return std::nullopt;
  return Ipv6Network{*address, *prefix, AddressType::Static};
}

std::string Ipv6Network::ToString() const {
  return address.GetScopedAddress() + "/" + std::to_string(prefix);
}

bool inSameNetwork(const Ipv6Address& a, const Ipv6Address& b, int prefix) {
  const auto differs = [&](int bit) {
    const auto byte = static_cast<std::size_t>(bit / 8);
    return ((a.GetBytes()[byte] ^ b.GetBytes()[byte]) >> (7 - bit % 8) & 1) != 0;
  };
  for (int bit = 0; bit < prefix; ++bit)
    if (differs(bit)) return false;
  return true;
}

bool inSameNetwork(Ipv4Address a, Ipv4Address b, Ipv4Address mask) {
  return ((a.GetValue() ^ b.GetValue()) & mask.GetValue()) == 0;
}

std::string toString(const IpAddress& address) {
  if (const auto* ipv6 = std::get_if<Ipv6Address>(&address)) return ipv6->GetScopedAddress();
  return std::get<Ipv4Address>(address).GetStringAddress();
}

std::string toString(const std::optional<IpAddress>& address) {
  return address ? toString(*address) : "";
}

std::optional<IpAddress> parseIpAddress(const std::string& text) {
  if (const auto ipv4 = Ipv4Address::FromString(text)) return IpAddress(*ipv4);
  if (const auto ipv6 = Ipv6Address::FromString(text)) return IpAddress(*ipv6);
  return std::nullopt;
}

}  // namespace HostCtl::Network
