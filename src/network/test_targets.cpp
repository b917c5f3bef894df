// SPDX-License-Identifier: MIT
#include "network/test_targets.h"

#include <cctype>
#include <string_view>

#include "core/keys.h"
#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "tarnctl/network/network_info_impl.h"

namespace Kiva {

using namespace HostCtl::Network;

namespace {

template <typename Read>
void tryReading(const Read& read) try {
  read();
} catch (const HostCtl::Lib::HostCtlException& exception) {
  logError("%s", exception.what());
}

/// The empty text for an address that is not set, or that the kernel cannot reach.
std::string offered(const IpAddress& address, bool ipv6Enabled) {
  if (const auto* ipv4 = std::get_if<Ipv4Address>(&address))
    return ipv4->IsEmpty() ? "" : ipv4->GetStringAddress();
  const auto& ipv6 = std::get<Ipv6Address>(address);
  return ipv6.IsEmpty() || !ipv6Enabled ? "" : ipv6.GetStringAddress();
}

}  // namespace

TestFacts readTestFacts() {
  TestFacts facts;
  tryReading([&] { facts.ipv6Enabled = TarnCtl::Network::NetworkInfoImpl().IsTarnIpv6Enabled(); });
  tryReading([&] {
    TarnCtl::Network::RoutingInfoImpl routing(kDefaultStack);
    tryReading([&] { facts.ipv4Gateway = routing.GetTarnDefaultGateway(); });
    if (facts.ipv6Enabled)
      tryReading([&] { facts.ipv6Gateway = routing.GetTarnIpv6DefaultGateway(); });
  });
  tryReading([&] {
    TarnCtl::Network::DnsConfigImpl dns(kDefaultStack);
    tryReading([&] { facts.nameServers = dns.GetNameServers(); });
    tryReading([&] { facts.hostname = dns.GetHostname(); });
    tryReading([&] { facts.domain = dns.GetDomain(); });
  });
  return facts;
}

TestTargets preparedTargets(const TestFacts& facts) {
  std::vector<IpAddress> candidates = {facts.ipv4Gateway, facts.ipv6Gateway};
  candidates.insert(candidates.end(), facts.nameServers.begin(), facts.nameServers.end());
  TestTargets targets;
  auto field = targets.addresses.begin();
  for (const IpAddress& candidate : candidates) {
    const std::string address = offered(candidate, facts.ipv6Enabled);
    if (!address.empty() && field != targets.addresses.end()) *field++ = address;
  }
  targets.hostname = facts.hostname;
  if (!facts.hostname.empty() && !facts.domain.empty()) targets.hostname += "." + facts.domain;
  return targets;
}

bool isAddressKey(int key) {
  return key == '.' || key == ':' || (Key::isPrintable(key) && std::isxdigit(key));
}

bool isNameKey(int key) {
  return Key::isPrintable(key) && key != Key::kSpace;
}

std::string withZone(const std::string& address, const std::string& interfaceName) {
  const auto ipv6 = Ipv6Address::FromString(address);
  if (!ipv6 || !ipv6->IsLinkLocal() || interfaceName.empty()) return address;
  constexpr std::string_view kPlain = "._-:@";
  std::string zoned = address + "%";
  for (const char c : interfaceName) {
    const bool plain =
        std::isalnum(static_cast<unsigned char>(c)) || kPlain.find(c) != std::string_view::npos;
    (zoned += plain ? "" : "\\") += c;
  }
  return zoned;
}

}  // namespace Kiva
