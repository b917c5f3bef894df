// SPDX-License-Identifier: MIT
#include "linux/networkd_describe.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>

namespace HostLinux {

using HostCtl::Network::AddressType;
using HostCtl::Network::IpAddress;
using HostCtl::Network::Ipv4Address;
using HostCtl::Network::Ipv6Address;
using nlohmann::json;

namespace {

struct Source {
  const char* name;
  AddressType type;
};

constexpr Source kSources[] = {{"DHCPv4", AddressType::Dhcp},
                               {"DHCPv6", AddressType::Dhcp},
                               {"NDisc", AddressType::Autoconf},
                               {"static", AddressType::Static}};

std::optional<AddressType> typeOf(const json& source) {
  const auto found = std::find_if(std::begin(kSources), std::end(kSources),
                                  [&](const Source& one) { return source == one.name; });
  return found == std::end(kSources) ? std::nullopt : std::optional(found->type);
}

const json& member(const json& object, const char* name) {
  static const json kNothing;
  const auto found = object.is_object() ? object.find(name) : object.end();
  return found == object.end() ? kNothing : *found;
}

std::optional<IpAddress> addressOf(const json& bytes) {
  Ipv6Address::Bytes raw{};
  const bool known = bytes.is_array() && (bytes.size() == 4 || bytes.size() == raw.size());
  if (!known) return std::nullopt;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (!bytes[i].is_number_unsigned() || bytes[i] > 255) return std::nullopt;
    raw[i] = bytes[i].get<std::uint8_t>();
  }
  if (bytes.size() == raw.size()) return Ipv6Address(raw);
  return Ipv4Address(std::uint32_t{raw[0]} << 24 | std::uint32_t{raw[1]} << 16 |
                     std::uint32_t{raw[2]} << 8 | raw[3]);
}

}  // namespace

std::vector<ReportedAddress> addressesIn(const std::string& description) {
  std::vector<ReportedAddress> result;
  const json root = json::parse(description, nullptr, false);
  for (const json& link : member(root, "Interfaces"))
    for (const json& entry : member(link, "Addresses")) {
      const auto type = typeOf(member(entry, "ConfigSource"));
      const auto address = addressOf(member(entry, "Address"));
      if (type && address) result.push_back({*address, *type});
    }
  return result;
}

}  // namespace HostLinux
