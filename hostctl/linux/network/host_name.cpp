// SPDX-License-Identifier: MIT
#include "linux/network/host_name.h"

#include <syslog.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <vector>

#include "hostctl/lib/whole_file.h"
#include "hostctl/network/hosts_file.h"
#include "linux/folder_lock.h"
#include "linux/text.h"

namespace HostLinux {

using HostSeam::DnsChange;

namespace {

constexpr const char* kHostsFile = "/etc/hosts";
constexpr std::string_view kOwnEntry = "127.0.1.1";
/// A test of the name resolution has the file for as long as its servers take.
constexpr std::chrono::seconds kTurnWithin{10};

std::string renamed(std::string_view entry, std::string_view from, std::string_view to) {
  std::vector<std::string_view> names;
  const auto add = [&](std::string_view name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  };
  for (const auto name : words(entry)) {
    if (name == from) add(to);
    if (name == labelOf(from)) add(labelOf(to));
    if (name != from && name != labelOf(from)) add(name);
  }
  std::string text(names[0]);
  for (std::size_t i = 1; i < names.size(); ++i) text.append(i == 1 ? "\t" : " ").append(names[i]);
  return text;
}

bool holds(const std::vector<std::string_view>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

std::string_view labelOf(std::string_view name) {
  return name.substr(0, name.find('.'));
}

std::string nameAfter(std::string_view name, const DnsChange& change) {
  const auto dot = name.find('.');
  const std::string label = change.hostname.value_or(std::string(labelOf(name)));
  std::string domain(dot == name.npos ? "" : name.substr(dot + 1));
  if (label.find('.') != label.npos) domain.clear();
  domain = change.domain.value_or(domain);
  return domain.empty() ? label : label + "." + domain;
}

std::string withRenamedHost(std::string_view hosts, std::string_view from, std::string_view to) {
  std::string result;
  for (const std::string_view line : lines(hosts)) {
    const auto comment = std::min(line.find('#'), line.size());
    const auto names = words(line.substr(0, comment));
    const bool own = !names.empty() && names[0] == kOwnEntry;
    if (own && (holds(names, from) || holds(names, labelOf(from)))) {
      result += renamed(line.substr(0, comment), from, to);
      if (comment < line.size()) result.append(" ").append(line.substr(comment));
    } else {
      result.append(line);
    }
    if (line.data() + line.size() != hosts.data() + hosts.size()) result += "\n";
  }
  return result;
}

void renameInHosts(const Files& files, const std::string& from, const std::string& to) try {
  const std::string path = files.Path(kHostsFile);
  if (!std::filesystem::exists(path)) return;
  const auto sole = lockFile(files.Path(HostCtl::Network::kHostsFileLock), kTurnWithin);
  const std::string old = HostCtl::Lib::readFile(path);
  const std::string hosts = withRenamedHost(old, from, to);
  if (hosts != old)
    HostCtl::Lib::changeFile(path, hosts);
  else if (old.find(kOwnEntry) != std::string::npos)
    syslog(LOG_USER | LOG_INFO, "%s of %s is left as it is", kOwnEntry.data(), kHostsFile);
} catch (const std::system_error& error) {
  syslog(LOG_USER | LOG_ERR, "The hosts file keeps the old name: %s", error.what());
}

}  // namespace HostLinux
