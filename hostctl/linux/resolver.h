// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hostseam/driver.h"
#include "linux/files.h"

namespace HostLinux {

/// What /etc/resolv.conf says. `domain` and `search` replace each other, the last one in the file
/// holds; both fill `search`.
struct ResolverFile {
  std::vector<HostCtl::Network::IpAddress> nameServers;
  std::vector<std::string> search;
  bool operator==(const ResolverFile&) const = default;
};

ResolverFile parseResolverFile(std::string_view text);

/// The file `text` with these servers and this search list, and everything else as it was.
std::string withResolver(std::string_view text, const ResolverFile& resolver);

/// The running host name, else the configured one, with its domain where it has one.
std::string readHostname(const Files& files);

/// The host name's first label is the name, the rest its domain; a bare name takes the first search
/// domain for it.
HostSeam::DnsRecord dnsFrom(std::string_view hostname, ResolverFile resolver);

/// Where the local resolver service stands in
/// resolv.conf, the servers behind it are the ones that count.
HostSeam::DnsRecord readDns(const Files& files);

}  // namespace HostLinux
