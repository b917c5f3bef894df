// SPDX-License-Identifier: MIT
#include "linux/network/ip_settings.h"

#include <linux/if_addr.h>

#include <algorithm>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "linux/network/foreign.h"
#include "linux/network/interface_file.h"
#include "linux/network/ip_file.h"
#include "linux/network/ipv6_switch.h"
#include "linux/network/leases.h"
#include "linux/network/nic_reader.h"
#include "linux/network/settle.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::IpAddress;
using HostCtl::Network::IpConfig;
using HostCtl::Network::Ipv4Address;
using HostCtl::Network::Ipv6Address;

namespace {

constexpr const char* kOperation = "SetIpConfig";

struct Wanted {
  IpAddress address;
  int prefix;
};

std::vector<Wanted> staticAddresses(const IpConfig& config) {
  std::vector<Wanted> wanted;
  if (config.GetIpv4UseStatic())
    wanted.push_back({config.GetIpv4Address(), config.GetIpv4Netmask().GetPrefix()});
  if (config.GetIpv6Enabled())
    for (const auto& network : config.GetStaticIpv6Networks())
      wanted.push_back({network.address, network.prefix});
  return wanted;
}

bool has(const NetworkTables& tables, const LinkRow& link, const Wanted& wanted) {
  const auto is = [&](const AddressRow& row) {
    return row.index == link.index && row.address == wanted.address &&
           row.prefix == wanted.prefix && (row.flags & IFA_F_TENTATIVE) == 0;
  };
  return std::any_of(tables.addresses.begin(), tables.addresses.end(), is);
}

bool isSameIpv4(const IpConfig& a, const IpConfig& b) {
  const bool bothStatic = a.GetIpv4UseStatic() && b.GetIpv4UseStatic();
  return a.GetIpv4UseNone() == b.GetIpv4UseNone() && a.GetIpv4UseDhcp() == b.GetIpv4UseDhcp() &&
         (!bothStatic ||
          (a.GetIpv4Address() == b.GetIpv4Address() && a.GetIpv4Netmask() == b.GetIpv4Netmask()));
}

bool isSameIpv6(const IpConfig& a, const IpConfig& b) {
  return a.GetIpv6UseDhcp() == b.GetIpv6UseDhcp() &&
         a.GetIpv6UseRouterAdvertisement() == b.GetIpv6UseRouterAdvertisement() &&
         a.GetStaticIpv6Networks() == b.GetStaticIpv6Networks();
}

/// Somebody else's file for networkd would switch IPv6 on again for the interface.
bool bringsIpv6Back(const Files& files, const HostSeam::KernelNic& nic) {
  return nic.configured.GetIpv6Enabled() && fileOfOthers(files, nic.name) &&
         files.Exists(kIpv6SwitchFile) && !ipv6ToBeOn(files);
}

/// Of an interface that has no file of ours.
bool isConfiguredSo(const Files& files, const std::string& interface, const IpConfig& config) {
  const auto nic = readKernelNic(files, kOperation, interface);
  return nic && isSameIpv4(config, nic->configured) &&
         config.GetDnsFromDhcp() == nic->configured.GetDnsFromDhcp() &&
         (!config.GetIpv6Enabled() || isSameIpv6(config, nic->configured)) &&
         !bringsIpv6Back(files, *nic);
}

/// networkd takes another address for some of these, and none for the others.
bool isForAnInterface(Ipv4Address address) {
  constexpr std::uint32_t kMulticast = 0xe, kEveryHost = 0xffffffff;
  const std::uint32_t value = address.GetValue();
  return !address.IsEmpty() && value >> 28 != kMulticast && value != kEveryHost;
}
bool isForAnInterface(const Ipv6Address& address) {
  return !address.IsEmpty() && !address.IsMulticast() && address.GetZone().empty();
}

void refuseSpecialAddresses(const IpConfig& config) {
  for (const Wanted& wanted : staticAddresses(config))
    if (!std::visit([](const auto& address) { return isForAnInterface(address); }, wanted.address))
      throw HostCtlException(kOperation, toString(wanted.address), "is no address of an interface");
  if (config.GetIpv4UseStatic() && !Ipv4Address::IsValidNetmask(config.GetIpv4Netmask()))
    throw HostCtlException(kOperation, config.GetIpv4Netmask().GetStringAddress(),
                           "is no network mask");
}

/// What is to be written for `config`; nothing where it is in force already, by whomever.
std::vector<FileChange> changesFor(const Files& files, const OwnFiles& own,
                                   const std::string& interface, const IpConfig& config) {
  const std::string name = ownFileName(interface, "network");
  if (!own.Exists(name) && isConfiguredSo(files, interface, config)) return {};
  IniFile file = interfaceFile(files, own, kOperation, interface);
  setIpConfig(file, interface, config, ipv6ToBeOn(files) ? Ipv6Half::InForce : Ipv6Half::Kept);
  if (own.Exists(name) && file.Text() == own.Read(name).Text()) return {};
  return {{name, file.Text()}};
}

}  // namespace

void waitForStaticAddresses(const Files& files, const std::string& operation,
                            const std::string& interface, const IpConfig& config) {
  for (const Wanted& wanted : staticAddresses(config))
    waitInForce(files, operation, interface, "the address " + toString(wanted.address),
                [&](const auto& tables, const auto& link) { return has(tables, link, wanted); });
}

void writeIpConfig(const Files& files, const std::string& interface, const IpConfig& config) try {
  const OwnFiles own(files);
  const auto sole = own.Lock();
  const auto changes = changesFor(files, own, interface, config);
  if (!changes.empty()) {
    refuseForeign(files, kOperation, interface);
    refuseSpecialAddresses(config);
  }
  const bool released = takeReleaseBack(files, interface);
  const auto check = [&] {
    refuseForeign(files, kOperation, interface);
    waitForStaticAddresses(files, kOperation, interface,
                           ipConfigIn(own.Read(changes.front().name)));
  };
  const bool changed = own.Change(kOperation, interface, changes,
                                  reloadAndCheck(files, kOperation, interface, check));
  if (released && !changed) reloadFor(files, kOperation, interface);
} catch (const std::system_error& error) {
  throw HostCtlException(kOperation, interface, error.what());
}

}  // namespace HostLinux
