// SPDX-License-Identifier: MIT
#include "linux/network/name_settings.h"

#include <syslog.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "hostseam/domain_name.h"
#include "linux/network/dns_file.h"
#include "linux/network/foreign.h"
#include "linux/network/host_name.h"
#include "linux/network/ip_file.h"
#include "linux/network/ip_settings.h"
#include "linux/network/networkd_bus.h"
#include "linux/network/nic_reader.h"
#include "linux/network/own_files.h"
#include "linux/network/settle.h"
#include "linux/network_file.h"
#include "linux/resolver.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::changeFile;
using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::replaceFile;
using HostCtl::Network::IpAddress;
using HostSeam::DnsChange;
namespace fs = std::filesystem;

namespace {

constexpr const char* kOperation = "SaveConfig";
constexpr const char* kResolverFile = "/etc/resolv.conf";
constexpr const char* kHostnameFile = "/etc/hostname";

std::vector<std::string> eachOnce(const std::vector<std::string>& domains) {
  std::vector<std::string> once;
  for (const auto& domain : domains) {
    if (!HostSeam::isDomainName(domain))
      throw HostCtlException(kOperation, domain, "is no domain name");
    if (std::none_of(once.begin(), once.end(),
                     [&](const auto& other) { return equalIgnoringCase(other, domain); }))
      once.push_back(domain);
  }
  return once;
}

/// The servers that the interface's leases and advertisements name.
std::vector<IpAddress> leasedServers(const Files& files, const std::string& interface) {
  const std::string path = "/run/systemd/netif/links/" + std::to_string(indexOf(files, interface));
  const std::string all = valueOf(parseAssignments(files.Read(path).value_or("")), "DNS");
  std::vector<IpAddress> servers;
  for (const auto word : words(all))
    if (const auto server = HostCtl::Network::parseIpAddress(std::string(word)))
      if (std::find(servers.begin(), servers.end(), *server) == servers.end())
        servers.push_back(*server);
  return servers;
}

void writeText(const std::string& path, const std::string& text) {
  if (fs::exists(path))
    changeFile(path, text);
  else
    replaceFile(path, text);
}

/// The management interface's own file, and what the change makes of it and of resolv.conf.
class ResolverChange {
 public:
  ResolverChange(const Files& files, const DnsChange& change) : files_(files), own_(files) {
    if (const auto nic = readManagementNic(files, kOperation)) interface_ = nic->name;
    if (!interface_.empty()) name_ = ownFileName(interface_, "network");
    old_ = files.Read(kResolverFile);
    ReadOwnFile(change);
    text_ = withResolver(old_.value_or(""), Wanted(change));
    const auto now = readDns(files);
    differs_ = change.nameServers.value_or(now.nameServers) != now.nameServers ||
               change.searchDomains.value_or(now.searchDomains) != now.searchDomains;
  }

  bool IsForeign() const {
    return !interface_.empty() && !foreignManagerOf(files_, interface_).empty();
  }

  void Carry() {
    const bool writes = IsOurs() && text_ != old_.value_or("");
    const bool changesFile = hasFile_ && file_.Text() != own_.Read(name_).Text();
    if ((writes || changesFile) && !interface_.empty())
      refuseForeign(files_, kOperation, interface_);
    if (!IsOurs() && !hasFile_ && differs_)
      throw HostCtlException(kOperation, kResolverFile, "belongs to somebody else");
    if (writes) writeText(files_.Path(kResolverFile), text_);
    try {
      if (changesFile)
        own_.Change(kOperation, interface_, {{name_, file_.Text()}},
                    reloadAndCheck(files_, kOperation, interface_, [this] {
                      waitForStaticAddresses(files_, kOperation, interface_, ipConfigIn(file_));
                    }));
    } catch (const HostCtlException&) {
      if (writes) PutBack();
      throw;
    }
  }

 private:
  bool IsOurs() const { return files_.LinkName(kResolverFile).empty(); }

  void ReadOwnFile(const DnsChange& change) {
    hasFile_ = !name_.empty() && own_.Exists(name_);
    if (!hasFile_) return;
    file_ = own_.Read(name_);
    fromDhcp_ = ipConfigIn(file_).GetDnsFromDhcp();
    setResolver(file_, change.nameServers.value_or(nameServersIn(file_)),
                change.searchDomains.value_or(searchDomainsIn(file_)));
  }

  ResolverFile Wanted(const DnsChange& change) const {
    ResolverFile wanted = parseResolverFile(old_.value_or(""));
    if (change.nameServers) wanted.nameServers = *change.nameServers;
    if (change.searchDomains) wanted.search = *change.searchDomains;
    if (!fromDhcp_) return wanted;
    if (auto leased = leasedServers(files_, interface_); !leased.empty())
      wanted.nameServers = std::move(leased);
    return wanted;
  }

  void PutBack() const try {
    if (old_)
      writeText(files_.Path(kResolverFile), *old_);
    else
      fs::remove(files_.Path(kResolverFile));
  } catch (const std::system_error& error) {
    syslog(LOG_USER | LOG_ERR, "The old resolv.conf could not be put back: %s", error.what());
  }

  const Files& files_;
  OwnFiles own_;
  std::string interface_, name_;
  std::optional<std::string> old_;
  IniFile file_;
  bool hasFile_ = false;
  bool fromDhcp_ = false;
  bool differs_ = false;
  std::string text_;
};

void takeNameBack(const std::string& name) try {
  setStaticHostname(kOperation, name);
} catch (const HostCtlException& error) {
  syslog(LOG_USER | LOG_ERR, "The host keeps its new name: %s", error.what());
}

}  // namespace

void writeDns(const Files& files, const DnsChange& asked) try {
  DnsChange change = asked;
  if (change.searchDomains) change.searchDomains = eachOnce(*change.searchDomains);
  const auto sole = OwnFiles(files).Lock();
  ResolverChange resolver(files, change);
  const std::string old = readHostname(files), stored = files.ReadLine(kHostnameFile);
  const std::string name = nameAfter(old, change);
  const bool renames = (change.hostname || change.domain) && (name != old || name != stored);
  if (renames && labelOf(name).empty()) throw HostCtlException(kOperation, name, "is no host name");
  if (renames) setStaticHostname(kOperation, name);
  try {
    resolver.Carry();
  } catch (const std::exception&) {
    if (renames) takeNameBack(stored);
    throw;
  }
  if (name != old) renameInHosts(files, old, name);
} catch (const std::system_error& error) {
  throw HostCtlException(kOperation, kResolverFile, error.what());
}

void followLeasedServers(const Files& files) try {
  const auto sole = OwnFiles(files).Lock();
  ResolverChange resolver(files, {});
  if (!resolver.IsForeign()) resolver.Carry();
} catch (const std::system_error& error) {
  throw HostCtlException(kOperation, kResolverFile, error.what());
}

}  // namespace HostLinux
