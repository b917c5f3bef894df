// SPDX-License-Identifier: MIT
#include "linux/network/nic_reader.h"

#include <algorithm>

#include "hostseam/management_nic.h"
#include "linux/kernel_nics.h"
#include "linux/network/ip_file.h"
#include "linux/network/own_files.h"
#include "linux/network_file.h"
#include "linux/pnics.h"

namespace HostLinux {

namespace {

void addFromFiles(const Files& files, LinkRow& link) {
  link.asksForDhcpv4 = interfaceAsksForDhcpv4(files, link.index);
  link.ipv6 = files.ReadLine("/proc/sys/net/ipv6/conf/" + link.name + "/disable_ipv6") == "0";
}

/// An uplink's file of ours says nothing about IP.
void addConfigured(const OwnFiles& own, HostSeam::KernelNic& nic) {
  const std::string name = std::string(kOwnNetworkFiles) + nic.name + ".network";
  if (!own.Exists(name)) return;
  const IniFile file = own.Read(name);
  nic.setUpByKiva = nic.setUpByKiva || file.Get("Network", "DHCP").has_value();
  nic.configured = ipConfigIn(file);
  nic.running.SetDhcpDns(nic.configured.GetDnsFromDhcp());
}

bool isMade(const HostSeam::KernelNic& nic) {
  return nic.name == kManagementNic;
}

}  // namespace

std::vector<HostSeam::KernelNic> readKernelNics(const Files& files, const std::string& operation,
                                                const std::vector<ReportedAddress>& reported) {
  NetworkTables tables = readNetworkTables(operation);
  for (auto& link : tables.links) addFromFiles(files, link);
  auto nics = kernelNicsFrom(tables);
  const OwnFiles own(files);
  for (auto& nic : nics) {
    refine(nic, reported);
    addConfigured(own, nic);
    nic.macAddress = files.ReadLine("/sys/class/net/" + nic.name + "/address");
  }
  // The one that Kiva made goes before one that it only configures.
  if (std::any_of(nics.begin(), nics.end(), isMade))
    for (auto& nic : nics) nic.setUpByKiva = isMade(nic);
  return nics;
}

std::optional<HostSeam::KernelNic> readManagementNic(const Files& files,
                                                     const std::string& operation) {
  return HostSeam::chooseManagementNic(readKernelNics(files, operation, {}));
}

}  // namespace HostLinux
