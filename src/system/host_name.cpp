// SPDX-License-Identifier: MIT
#include "system/host_name.h"

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "tarnctl/network/network_info_impl.h"
#include "ui/markup_text.h"

namespace Kiva {

std::string withHostName(const std::string& intro) {
  std::string hostname, domain;
  try {
    TarnCtl::Network::DnsConfigImpl dns(HostCtl::Network::kDefaultStack);
    hostname = dns.GetHostname();
    domain = dns.GetDomain();
  } catch (const HostCtl::Lib::HostCtlException&) {
  }
  return formatted("%s%s.%s.", intro.c_str(), plainText(hostname).c_str(),
                   plainText(domain).c_str());
}

}  // namespace Kiva
