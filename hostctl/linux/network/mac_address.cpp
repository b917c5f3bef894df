// SPDX-License-Identifier: MIT
#include "linux/network/mac_address.h"

#include <cstdio>

namespace HostLinux {

namespace {

constexpr unsigned kGroup = 0x01;
constexpr unsigned kLocal = 0x02;

}  // namespace

std::optional<MacAddress> MacAddress::FromString(const std::string& text) {
  Bytes bytes{};
  constexpr std::size_t kLength = 17;
  int read = 0;
  const int count = std::sscanf(text.c_str(), "%2hhx:%2hhx:%2hhx:%2hhx:%2hhx:%2hhx%n", &bytes[0],
                                &bytes[1], &bytes[2], &bytes[3], &bytes[4], &bytes[5], &read);
  const bool whole = count == 6 && text.size() == kLength && read == static_cast<int>(kLength);
  if (!whole || text.find_first_of(" \t-+x") != text.npos) return std::nullopt;
  if (bytes == Bytes{} || (bytes[0] & kGroup) != 0) return std::nullopt;
  return MacAddress(bytes);
}

std::string MacAddress::ToString() const {
  char text[18];
  std::snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", bytes_[0], bytes_[1], bytes_[2],
                bytes_[3], bytes_[4], bytes_[5]);
  return text;
}

MacAddress MacAddress::Replaced(unsigned flipped) const {
  Bytes bytes = bytes_;
  bytes[0] = static_cast<std::uint8_t>(((bytes[0] ^ flipped) | kLocal) & ~kGroup);
  return MacAddress(bytes);
}

}  // namespace HostLinux
