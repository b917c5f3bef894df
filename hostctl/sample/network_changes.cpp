// SPDX-License-Identifier: MIT
#include "sample/network_changes.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"
#include "hostseam/domain_name.h"
#include "sample/json_lists.h"
#include "sample/network_parts.h"
#include "sample/running_state.h"

namespace HostSample {

using namespace HostCtl::Network;

namespace {

using HostCtl::Lib::HostCtlException;

Json& requireManagementNic(Json& network) {
  if (Json* nic = managementNic(network)) return *nic;
  throw HostCtlException("There is no management interface.");
}

/// All that a configuration says for itself, so that two of them can be compared.
IpConfig comparable(const IpConfig& config) {
  const bool isStatic = config.GetIpv4UseStatic();
  IpConfig own;
  own.SetUseDhcp(config.GetIpv4UseDhcp(), config.GetIpv4UseNone());
  own.SetIpv4Address(isStatic ? config.GetIpv4Address() : Ipv4Address());
  own.SetIpv4Netmask(isStatic ? config.GetIpv4Netmask() : Ipv4Address());
  own.SetIpv6Networks(config.GetStaticIpv6Networks());
  own.SetUseIpv6Dhcp(config.GetIpv6UseDhcp());
  own.SetUseIpv6RouterAdvertised(config.GetIpv6UseRouterAdvertisement());
  own.SetDhcpDns(config.GetDnsFromDhcp());
  return own;
}

bool isMacAddress(const std::string& text) {
  constexpr std::string_view kPattern = "xx:xx:xx:xx:xx:xx";
  const auto fits = [](char c, char pattern) {
    return pattern == ':' ? c == ':' : isxdigit(static_cast<unsigned char>(c)) != 0;
  };
  return std::equal(text.begin(), text.end(), kPattern.begin(), kPattern.end(), fits);
}

/// The order of an object's keys is no difference.
bool differs(const Json& one, const Json& other) {
  return nlohmann::json(one) != nlohmann::json(other);
}

}  // namespace

void changeNetwork(Store& store, const std::function<void(Json& network)>& change) {
  store.Change([&](Json& host) {
    Json& network = host["network"];
    const Json before = network;
    change(network);
    return differs(before, network);
  });
}

void startNetwork(Json& network) {
  const auto next = network.find("ipv6EnabledAtStart");
  if (next != network.end() && next->is_boolean()) network["ipv6Enabled"] = *next;
  network.erase("ipv6EnabledAtStart");
  for (Json& nic : network["kernelNics"]) comeUp(network, nic);
}

void setIpv6Enabled(Store& store, bool enabled) {
  changeNetwork(store, [&](Json& network) {
    network.erase("ipv6EnabledAtStart");
    if (network["ipv6Enabled"] != enabled) network["ipv6EnabledAtStart"] = enabled;
  });
}

void setIpConfig(Store& store, const std::string& nic, const IpConfig& config) {
  changeNetwork(store, [&](Json& network) {
    Json& changed = nicNamed(network, nic);
    const IpConfig wanted = comparable(config);
    if (comparable(configOf(changed, "configured")) == wanted) return;
    changed["configured"].update(ipConfigJson(wanted));
    run(network, changed, inForce(wanted, configOf(changed, "running"), offersOf(changed)));
  });
}

void renewLease(Store& store, const std::string& nic, LeaseRenewal what) {
  changeNetwork(store, [&](Json& network) {
    Json& asking = nicNamed(network, nic);
    run(network, asking, renewed(configOf(asking, "running"), offersOf(asking), what));
  });
}

void releaseLease(Store& store, const std::string& nic) {
  changeNetwork(store, [&](Json& network) {
    Json& giving = nicNamed(network, nic);
    run(network, giving, released(configOf(giving, "running")));
  });
}

void setNicUp(Store& store, const std::string& nic, bool up) {
  changeNetwork(store, [&](Json& network) {
    Json& changed = nicNamed(network, nic);
    if (has(changed, "up", false) != up) return;
    if (up)
      comeUp(network, changed);
    else
      changed["up"] = false;
  });
}

void setMacAddress(Store& store, const std::string& nic, const std::string& macAddress) {
  changeNetwork(store, [&](Json& network) {
    Json& changed = nicNamed(network, nic);
    if (!isMacAddress(macAddress))
      throw HostCtlException("\"" + macAddress + "\" is not a MAC address.");
    changed["macAddress"] = macAddress;
  });
}

void setIpv4Gateway(Store& store, Ipv4Address gateway) {
  changeNetwork(store, [&](Json& network) {
    const Json& nic = requireManagementNic(network);
    if (!gateway.IsEmpty() && !isOnLink(gateway, configOf(nic, "running")))
      throw HostCtlException("The gateway " + gateway.GetStringAddress() +
                             " is not on the network of " + nic["name"].get<std::string>() + ".");
    HostSeam::RoutingRecord routing = routingOf(network);
    routing.ipv4Gateway = gateway;
    writeRouting(network, routing);
  });
}

void setIpv6Gateway(Store& store, const Ipv6Address& gateway) {
  changeNetwork(store, [&](Json& network) {
    requireManagementNic(network);
    HostSeam::RoutingRecord routing = routingOf(network);
    routing.ipv6Gateway = gateway;
    writeRouting(network, routing);
  });
}

void setDns(Store& store, const HostSeam::DnsChange& change) {
  for (const auto& domain : change.searchDomains.value_or(std::vector<std::string>()))
    if (!HostSeam::isDomainName(domain))
      throw HostCtlException("SaveConfig", domain, "is no domain name");
  changeNetwork(store, [&](Json& network) {
    Json& dns = network["dns"];
    if (change.hostname) dns["hostname"] = *change.hostname;
    if (change.domain) dns["domain"] = *change.domain;
    if (change.nameServers) writeNameServers(network, *change.nameServers);
    if (change.searchDomains) dns["searchDomains"] = *change.searchDomains;
  });
}

}  // namespace HostSample
