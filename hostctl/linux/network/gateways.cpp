// SPDX-License-Identifier: MIT
#include <algorithm>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "linux/network/foreign.h"
#include "linux/network/interface_file.h"
#include "linux/network/ip_file.h"
#include "linux/network/ip_settings.h"
#include "linux/network/networkd_bus.h"
#include "linux/network/nic_reader.h"
#include "linux/network/settle.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::IpConfig;
using HostCtl::Network::Ipv4Address;
using HostCtl::Network::Ipv6Address;

namespace {

bool reaches(const IpConfig& config, const std::string&, Ipv4Address gateway) {
  const auto own = config.GetIpv4Address();
  return !own.IsEmpty() && inSameNetwork(own, gateway, config.GetIpv4Netmask());
}

/// Whoever has his address from DHCPv6 does not know his network; the kernel decides then.
bool reaches(const IpConfig& config, const std::string& interface, const Ipv6Address& gateway) {
  if (gateway.IsLinkLocal()) return gateway.GetZone().empty() || gateway.GetZone() == interface;
  const auto& networks = config.GetIpv6Networks();
  return config.GetIpv6UseDhcp() ||
         std::any_of(networks.begin(), networks.end(), [&](const auto& network) {
           return inSameNetwork(network.address, gateway, network.prefix);
         });
}

/// The half of `config` that goes with the kind of address, as far as gateways need it.
bool hasFamily(const IpConfig& config, Ipv4Address) {
  return !config.GetIpv4UseNone();
}
bool hasFamily(const IpConfig& config, const Ipv6Address&) {
  return config.GetIpv6Enabled();
}
Ipv4Address gatewayOf(const IpConfig& config, Ipv4Address) {
  return config.GetIpv4Gateway();
}
Ipv6Address gatewayOf(const IpConfig& config, const Ipv6Address&) {
  return config.GetIpv6Gateway();
}
std::string textOf(Ipv4Address gateway) {
  return gateway.GetStringAddress();
}
std::string textOf(const Ipv6Address& gateway) {
  return gateway.GetScopedAddress();
}

/// Routes of the kernel's have no zone of an operator's.
template <class Address>
bool leadsOver(const NetworkTables& tables, int index, const Address& gateway) {
  return std::any_of(tables.defaultRoutes.begin(), tables.defaultRoutes.end(),
                     [&](const auto& one) {
                       const auto* address = std::get_if<Address>(&one.gateway);
                       return one.index == index && address &&
                              address->GetStringAddress() == gateway.GetStringAddress();
                     });
}

/// Until the route over `gateway` is there, or that over `old` is gone.
template <class Address>
void waitForRoute(const Files& files, const std::string& operation, const std::string& interface,
                  const Address& gateway, const Address& old) {
  waitInForce(files, operation, interface, "the default gateway " + textOf(gateway),
              [&](const NetworkTables& tables, const LinkRow& link) {
                if (!gateway.IsEmpty()) return leadsOver(tables, link.index, gateway);
                return old.IsEmpty() || !leadsOver(tables, link.index, old);
              });
}

/// The gateway comes with the addresses of the configuration, which are taken away for a moment.
template <class Address>
void waitForGateway(const Files& files, const std::string& operation, const std::string& interface,
                    const IpConfig& before, const Address& gateway) {
  if (hasFamily(before, gateway))
    waitForRoute(files, operation, interface, gateway, gatewayOf(before, gateway));
  waitForStaticAddresses(files, operation, interface, before);
}

HostSeam::KernelNic managementNic(const Files& files, const std::string& operation,
                                  const std::string& gateway) {
  auto nic = readManagementNic(files, operation);
  if (!nic) throw HostCtlException(operation, gateway, "there is no management interface");
  return *nic;
}

template <class Address>
void demandReached(const std::string& operation, const HostSeam::KernelNic& nic,
                   const IpConfig& config, const Address& gateway) {
  const bool reached = gateway.IsEmpty() || reaches(config, nic.name, gateway) ||
                       reaches(nic.running, nic.name, gateway);
  if (!reached)
    throw HostCtlException(operation, textOf(gateway), "is in no network of " + nic.name);
}

template <class Address>
void write(const Files& files, const std::string& operation, const Address& gateway) {
  const auto nic = managementNic(files, operation, textOf(gateway));
  const OwnFiles own(files);
  const auto sole = own.Lock();
  const std::string name = ownFileName(nic.name, "network");
  const int index = indexOf(files, nic.name);
  const auto leads = [&] { return leadsOver(readNetworkTables(operation), index, gateway); };
  if (!own.Exists(name) && leads()) return;
  IniFile file = interfaceFile(files, own, operation, nic.name);
  const IpConfig before = ipConfigIn(file);
  if (gateway.IsEmpty() && gatewayOf(before, gateway).IsEmpty()) return;
  refuseForeign(files, operation, nic.name);
  demandReached(operation, nic, before, gateway);
  setGateway(file, gateway);
  const auto check = [&] { waitForGateway(files, operation, nic.name, before, gateway); };
  if (own.Change(operation, nic.name, {{name, file.Text()}},
                 reloadAndCheck(files, operation, nic.name, check)))
    return;
  if (leads()) return;
  reconfigureLink(operation, nic.name, index);
  check();
}

template <class Address>
void writeOrThrow(const Files& files, const std::string& operation, const Address& gateway) try {
  write(files, operation, gateway);
} catch (const std::system_error& error) {
  throw HostCtlException(operation, textOf(gateway), error.what());
}

}  // namespace

void writeGateway(const Files& files, Ipv4Address gateway) {
  writeOrThrow(files, "SetTarnDefaultGateway", gateway);
}

void writeGateway(const Files& files, const Ipv6Address& gateway) {
  writeOrThrow(files, "SetIpv6TarnDefaultGateway", gateway);
}

void waitForStaticGateways(const Files& files, const std::string& operation,
                           const std::string& interface, const IpConfig& config) {
  const auto ipv4 = config.GetIpv4UseStatic() ? config.GetIpv4Gateway() : Ipv4Address();
  const auto ipv6 = config.GetIpv6Enabled() ? config.GetIpv6Gateway() : Ipv6Address();
  waitForRoute(files, operation, interface, ipv4, Ipv4Address());
  waitForRoute(files, operation, interface, ipv6, Ipv6Address());
}

}  // namespace HostLinux
