// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hostctl/network/ip_config.h"
#include "hostctl/network/network_info.h"

namespace Kiva {

/// The texts of the welcome screen, as markup: composed from the host's facts, shown by the window.
struct WelcomeContent {
  std::string banner;
  std::string hardware;
  std::string processors;
  std::string management;
  /// Empty when there is nothing to warn of.
  std::string warning;
};

/// Raises the host's alert when it turns out to have no network adapter: once, however often the
/// screen is filled meanwhile.
class AdapterAlert {
 public:
  void Update(bool adapters);

 private:
  bool raised_ = false;
};

/// Reads the host's facts and composes them. Throws HostCtlException when the host fails a fact.
WelcomeContent readWelcomeContent(HostCtl::Network::DnsConfig& dns, AdapterAlert& alert);

/// Vendor and product on one line.
std::string hardwareText(const std::string& vendor, const std::string& product);

/// The model, preceded by the number of packages when there are several.
std::string processorText(const std::string& model, int packages);

/// Where the host can be managed: one URL a line for its name, its IPv4 address and, with IPv6
/// enabled, its IPv6 addresses. Without a management interface only the name shows.
std::string managementText(const std::string& hostname,
                           const std::optional<HostCtl::Network::IpConfig>& config,
                           bool ipv6Enabled);

/// The URLs of at most five IPv6 addresses, sorted, each line ended; "..." when some are left out.
std::string ipv6Lines(const std::vector<HostCtl::Network::Ipv6Network>& networks);

}  // namespace Kiva
