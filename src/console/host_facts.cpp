// SPDX-License-Identifier: MIT
#include "console/host_facts.h"

#include "console/fact_format.h"
#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/management_interface.h"
#include "tarnctl/network/network_info_impl.h"
#include "tarnctl/system/system_info_impl.h"
#include "ui/keyword_table.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;

namespace {

constexpr const char* kNotAvailable = "N/A";

std::string notAvailable() {
  return kNotAvailable;
}

struct Keyword {
  const char* name;
  std::string (*value)();
};

constexpr Keyword kKeywords[] = {
    {"ip", hostAddress},
    {"hostname", hostName},
    {"haloproduct", productName},
    {"haloversion", productVersion},
    {"ssl-thumbprint", certificateSha1},
    {"ssl-thumbprint-256", certificateSha256},
    {"ssh-dsa-fingerprint", dsaHostKey},
    {"ssh-rsa-fingerprint", rsaHostKey},
    {"serial-number", serialNumber},
    {"memory", memorySize},
    {"servicetag", serviceTag},
    {"assettag", [] { return componentVersion(Component::kAssetTag); }},
    {"BIOSversion", [] { return componentVersion(Component::kBios); }},
    {"BMCversion", [] { return componentVersion(Component::kBmc); }},
    {"PLSAversion", [] { return componentVersion(Component::kStorageAdapter); }},
    {"CPLDversion", notAvailable},
    {"supportstart", notAvailable},
    {"supportperiod", notAvailable},
};

}  // namespace

std::string hostAddress() {
  HostCtl::Network::Ipv4Address address;
  try {
    if (const auto interface = findManagementInterface()) {
      if (interface->IsStale()) interface->Refresh();
      address = interface->GetIpConfig().GetIpv4Address();
    }
  } catch (const HostCtlException&) {
  }
  return address.GetStringAddress();
}

std::string hostName() {
  TarnCtl::Network::DnsConfigImpl dns(HostCtl::Network::kDefaultStack);
  const std::string domain = dns.GetDomain();
  return dns.GetHostname() + "." + domain;
}

std::string productName() try {
  return TarnCtl::System::SystemInfoImpl().GetVersion().productName;
} catch (const HostCtlException&) {
  return {};
}

std::string productVersion() try {
  const auto record = TarnCtl::System::SystemInfoImpl().GetVersion();
  return formatted("%s build-%05u", record.version.c_str(), record.buildNumber);
} catch (const HostCtlException&) {
  return {};
}

std::string serialNumber() {
  return TarnCtl::System::HardwareInfoImpl().GetSerialNumber();
}

std::string memorySize() {
  TarnCtl::System::MemoryInfoImpl memory;
  const auto pages = memory.GetTotalPages();
  return memoryText(pages * memory.GetPageSize());
}

std::string serviceTag() try {
  const std::string tag = TarnCtl::System::HardwareInfoImpl().GetServiceTag();
  return tag.empty() ? kNotAvailable : tag;
} catch (const HostCtlException&) {
  return kNotAvailable;
}

void registerHostFacts() {
  for (const Keyword& keyword : kKeywords) keywordTable().Register(keyword.name, keyword.value);
}

}  // namespace Kiva
