// SPDX-License-Identifier: MIT
#include "linux/network/dns_file.h"

#include "linux/network_file.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Network::IpAddress;

namespace {

constexpr const char* kNetwork = "Network";
constexpr const char* kDhcpv4 = "DHCPv4";
constexpr const char* kDhcpv6 = "DHCPv6";
constexpr const char* kAdvertised = "IPv6AcceptRA";

struct LeasedKey {
  const char* section;
  const char* key;
};

constexpr LeasedKey kLeasedKeys[] = {
    {kDhcpv4, "UseDNS"},     {kDhcpv4, "UseDomains"},     {kDhcpv4, "UseHostname"},
    {kDhcpv6, "UseDNS"},     {kDhcpv6, "UseDomains"},     {kDhcpv6, "UseHostname"},
    {kAdvertised, "UseDNS"}, {kAdvertised, "UseDomains"},
};

std::vector<std::string> domainsIn(const IniFile& file) {
  std::vector<std::string> domains;
  for (const auto& value : file.GetAll(kNetwork, "Domains"))
    for (const auto word : words(value)) domains.emplace_back(word);
  return domains;
}

bool isRouteOnly(const std::string& domain) {
  return domain.starts_with('~');
}

}  // namespace

bool takesLeasedDns(const IniFile& file, Dhcp dhcp) {
  return meansYes(file.Get(dhcp == Dhcp::V4 ? kDhcpv4 : kDhcpv6, "UseDNS").value_or("yes"));
}

void setDnsFromDhcp(IniFile& file, bool fromDhcp) {
  for (const auto& [section, key] : kLeasedKeys) file.Set(section, key, fromDhcp ? "yes" : "no");
  if (fromDhcp) file.Remove(kNetwork, "DNS");
}

void setResolver(IniFile& file, const std::vector<IpAddress>& nameServers,
                 const std::vector<std::string>& searchDomains) {
  std::vector<std::string> servers;
  for (const auto& server : nameServers) servers.push_back(toString(server));
  if (nameServersIn(file) != nameServers) file.SetAll(kNetwork, "DNS", servers);
  if (searchDomainsIn(file) == searchDomains) return;
  std::vector<std::string> domains = domainsIn(file);
  std::erase_if(domains, [](const std::string& domain) { return !isRouteOnly(domain); });
  domains.insert(domains.begin(), searchDomains.begin(), searchDomains.end());
  file.SetAll(kNetwork, "Domains", domains);
}

std::vector<IpAddress> nameServersIn(const IniFile& file) {
  std::vector<IpAddress> servers;
  for (const auto& value : file.GetAll(kNetwork, "DNS"))
    for (const auto word : words(value))
      if (const auto server = HostCtl::Network::parseIpAddress(std::string(word)))
        servers.push_back(*server);
  return servers;
}

std::vector<std::string> searchDomainsIn(const IniFile& file) {
  std::vector<std::string> domains = domainsIn(file);
  std::erase_if(domains, isRouteOnly);
  return domains;
}

}  // namespace HostLinux
