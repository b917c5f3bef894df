// SPDX-License-Identifier: MIT
#include "linux/network/ip_settings.h"

#include <linux/if_addr.h>

#include <algorithm>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "linux/network/foreign.h"
#include "linux/network/ip_file.h"
#include "linux/network/ipv6_switch.h"
#include "linux/network/leases.h"
#include "linux/network/settle.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::IpAddress;
using HostCtl::Network::IpConfig;

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

}  // namespace

void waitForStaticAddresses(const std::string& operation, const std::string& interface,
                            const IpConfig& config) {
  for (const Wanted& wanted : staticAddresses(config))
    waitInForce(operation, interface, "the address " + toString(wanted.address),
                [&](const auto& tables, const auto& link) { return has(tables, link, wanted); });
}

void writeIpConfig(const Files& files, const std::string& interface, const IpConfig& config) try {
  refuseForeign(files, kOperation, interface);
  const OwnFiles own(files);
  const auto sole = own.Lock();
  const std::string name = ownFileName(interface, "network");
  IniFile file = own.Read(name);
  setIpConfig(file, interface, config, ipv6ToBeOn(files) ? Ipv6Half::InForce : Ipv6Half::Kept);
  const bool released = takeReleaseBack(files, interface);
  const auto check = [&] { waitForStaticAddresses(kOperation, interface, ipConfigIn(file)); };
  const bool changed = own.Change(kOperation, interface, {{name, file.Text()}},
                                  reloadAndCheck(files, kOperation, interface, check));
  if (released && !changed) reloadFor(files, kOperation, interface);
} catch (const std::system_error& error) {
  throw HostCtlException(kOperation, interface, error.what());
}

}  // namespace HostLinux
