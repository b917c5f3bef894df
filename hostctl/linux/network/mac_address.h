// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace HostLinux {

/// The hardware address of a link.
class MacAddress {
 public:
  using Bytes = std::array<std::uint8_t, 6>;
  MacAddress() = default;
  explicit MacAddress(const Bytes& bytes) : bytes_(bytes) {}
  /// Six numbers ("9e:3e:41:07:21:a8") that one station may have, or nothing.
  static std::optional<MacAddress> FromString(const std::string& text);

  const Bytes& GetBytes() const { return bytes_; }
  std::string ToString() const;
  /// The address that an uplink has while the host's own interface has the adapter's: one of those
  /// that nobody is given, always the same for the same adapter. That of a bond is another one.
  MacAddress ForUplink() const { return Replaced(0x04); }
  MacAddress ForBond() const { return Replaced(0x08); }

  bool operator==(const MacAddress&) const = default;

 private:
  MacAddress Replaced(unsigned flipped) const;

  Bytes bytes_{};
};

}  // namespace HostLinux
