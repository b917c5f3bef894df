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
  static bool IsValidAddress(const std::string& text) { return FromString(text).has_value(); }
  /// A run of one bits from the left, at least one of them.
  static bool IsValidNetmask(Ipv4Address mask);
  /// The mask of a prefix of 0 to 32 bits.
  static Ipv4Address FromPrefix(int bits);

  std::uint32_t GetValue() const { return value_; }
  /// The length of the prefix whose mask this is.
  int GetPrefix() const;
  bool IsEmpty() const { return value_ == 0; }
  std::string GetStringAddress() const;
  auto operator<=>(const Ipv4Address&) const = default;

 private:
  std::uint32_t value_ = 0;
};

/// An IPv6 address, its sixteen bytes in network order; the empty address is "::". A link-local one
/// may have a zone, the interface on whose link it is meant.
class Ipv6Address {
 public:
  using Bytes = std::array<std::uint8_t, 16>;
  Ipv6Address() = default;
  explicit Ipv6Address(const Bytes& bytes, std::string zone = {})
      : bytes_(bytes), zone_(std::move(zone)) {}
  /// With or without a zone ("fe80::1%tarn0"), or nothing.
  static std::optional<Ipv6Address> FromString(const std::string& text);
  static bool IsValidAddress(const std::string& text) { return FromString(text).has_value(); }

  const Bytes& GetBytes() const { return bytes_; }
  const std::string& GetZone() const { return zone_; }
  bool IsEmpty() const { return bytes_ == Bytes{}; }
  bool IsLinkLocal() const { return bytes_[0] == 0xfe && (bytes_[1] & 0xc0) == 0x80; }
  bool IsMulticast() const { return bytes_[0] == 0xff; }
  std::string GetStringAddress() const;
  /// With its zone.
  std::string GetScopedAddress() const;
  auto operator<=>(const Ipv6Address&) const = default;

 private:
  Bytes bytes_{};
  std::string zone_;
};

/// Who gave an interface an address. `Other` covers link-local and everything unknown.
enum class AddressType { Other, Static, Dhcp, Autoconf };

/// An IPv6 address of an interface with its prefix length in bits.
struct Ipv6Network {
  Ipv6Address address;
  int prefix = 64;
  AddressType type = AddressType::Other;

  /// A static network from "address/prefix" with a prefix of 1 to 128, or nothing.
  static std::optional<Ipv6Network> FromString(const std::string& text);
  static bool IsValidAddressAndNetmask(const std::string& text) {
    return FromString(text).has_value();
  }
  /// "address/prefix".
  std::string ToString() const;
  bool operator==(const Ipv6Network&) const = default;
};

/// Whether two addresses have their first `prefix` bits, or those of `mask`, in common.
bool inSameNetwork(const Ipv6Address& a, const Ipv6Address& b, int prefix);
bool inSameNetwork(Ipv4Address a, Ipv4Address b, Ipv4Address mask);

using IpAddress = std::variant<Ipv4Address, Ipv6Address>;

/// Either kind of address as text, with its zone.
std::string toString(const IpAddress& address);
/// Empty where there is none.
std::string toString(const std::optional<IpAddress>& address);
std::optional<IpAddress> parseIpAddress(const std::string& text);

}  // namespace HostCtl::Network
