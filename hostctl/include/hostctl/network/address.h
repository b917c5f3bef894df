// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace HostCtl::Network {

/// An IPv4 address in host byte order; the empty address is 0.0.0.0. Also holds net masks.
class Ipv4Address {
 public:
  Ipv4Address() = default;
  explicit Ipv4Address(std::uint32_t value) : value_(value) {}
  /// Dotted text with four decimal numbers, or nothing.
  static std::optional<Ipv4Address> FromString(const std::string& text);
  /// The mask of a prefix of 0 to 32 bits.
  static Ipv4Address FromPrefix(int bits);

  std::uint32_t GetValue() const { return value_; }
  bool IsEmpty() const { return value_ == 0; }
  std::string GetStringAddress() const;
  auto operator<=>(const Ipv4Address&) const = default;

 private:
  std::uint32_t value_ = 0;
};

/// An IPv6 address, its sixteen bytes in network order; the empty address is "::".
class Ipv6Address {
 public:
  using Bytes = std::array<std::uint8_t, 16>;
  Ipv6Address() = default;
  explicit Ipv6Address(const Bytes& bytes) : bytes_(bytes) {}
  static std::optional<Ipv6Address> FromString(const std::string& text);

  const Bytes& GetBytes() const { return bytes_; }
  bool IsEmpty() const { return bytes_ == Bytes{}; }
  bool IsLinkLocal() const { return bytes_[0] == 0xfe && (bytes_[1] & 0xc0) == 0x80; }
  std::string GetStringAddress() const;
  auto operator<=>(const Ipv6Address&) const = default;

 private:
  Bytes bytes_{};
};

/// Who gave an interface an address. `Other` covers link-local and everything unknown.
enum class AddressType { Other, Static, Dhcp, Autoconf };

/// An IPv6 address of an interface with its prefix length in bits.
struct Ipv6Network {
  Ipv6Address address;
  int prefix = 64;
  AddressType type = AddressType::Other;
  bool operator==(const Ipv6Network&) const = default;
};

using IpAddress = std::variant<Ipv4Address, Ipv6Address>;

/// Either kind of address as text.
std::string toString(const IpAddress& address);
std::optional<IpAddress> parseIpAddress(const std::string& text);

}  // namespace HostCtl::Network
