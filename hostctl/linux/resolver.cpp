// SPDX-License-Identifier: MIT
#include "linux/resolver.h"

#include "linux/text.h"

namespace HostLinux {

namespace {

using HostCtl::Network::IpAddress;
using HostCtl::Network::parseIpAddress;

std::string_view withoutComment(std::string_view line) {
  return line.substr(0, line.find_first_of("#;"));
}

std::vector<std::string> searchList(const std::vector<std::string_view>& directive) {
  const std::size_t most = directive[0] == "domain" ? 2 : directive.size();
  std::vector<std::string> domains;
  for (std::size_t i = 1; i < directive.size() && i < most; ++i)
    if (directive[i] != ".") domains.emplace_back(directive[i]);
  return domains;
}

bool asksOnlyTheLocalService(const ResolverFile& resolver) {
  return resolver.nameServers.size() == 1 &&
         resolver.nameServers[0] == parseIpAddress("127.0.0.53");
}

bool isOneOfOurs(std::string_view line) {
  const auto said = words(withoutComment(line));
  return !said.empty() && (said[0] == "nameserver" || said[0] == "domain" || said[0] == "search");
}

std::string resolverLines(const ResolverFile& resolver) {
  std::string text;
  if (!resolver.search.empty()) text = "search";
  for (const auto& domain : resolver.search) text += " " + domain;
  if (!text.empty()) text += "\n";
  for (const auto& server : resolver.nameServers) text += "nameserver " + toString(server) + "\n";
  return text;
}

}  // namespace

std::string readHostname(const Files& files) {
  std::string running = files.ReadLine("/proc/sys/kernel/hostname");
  const bool says = !running.empty() && running != "(none)" && running != "localhost";
  if (says) return running;
  std::string configured = files.ReadLine("/etc/hostname");
  return configured.empty() ? running : configured;
}

ResolverFile parseResolverFile(std::string_view text) {
  ResolverFile result;
  for (const std::string_view line : lines(text)) {
    const auto directive = words(withoutComment(line));
    if (directive.size() < 2) continue;
    if (directive[0] == "domain" || directive[0] == "search") result.search = searchList(directive);
    if (directive[0] != "nameserver") continue;
    if (const auto parsed = parseIpAddress(std::string(directive[1])))
      result.nameServers.push_back(*parsed);
  }
  return result;
}

std::string withResolver(std::string_view text, const ResolverFile& resolver) {
  if (parseResolverFile(text) == resolver) return std::string(text);
  std::string result;
  bool written = false;
  for (const std::string_view line : lines(text)) {
    const bool ours = isOneOfOurs(line);
    if (ours && !written) result += resolverLines(resolver);
    written = written || ours;
    if (!ours) result.append(line).append("\n");
  }
  return written ? result : result + resolverLines(resolver);
}

HostSeam::DnsRecord dnsFrom(std::string_view hostname, ResolverFile resolver) {
  HostSeam::DnsRecord record;
  const auto dot = hostname.find('.');
  record.hostname = hostname.substr(0, dot);
  if (dot != std::string_view::npos) record.domain = hostname.substr(dot + 1);
  if (record.domain.empty() && !resolver.search.empty()) record.domain = resolver.search[0];
  record.nameServers = std::move(resolver.nameServers);
  record.searchDomains = std::move(resolver.search);
  return record;
}

HostSeam::DnsRecord readDns(const Files& files) {
  auto resolver = parseResolverFile(files.Read("/etc/resolv.conf").value_or(""));
  if (asksOnlyTheLocalService(resolver))
    if (const auto behind = files.Read("/run/systemd/resolve/resolv.conf"))
      resolver = parseResolverFile(*behind);
  return dnsFrom(readHostname(files), std::move(resolver));
}

}  // namespace HostLinux
