// SPDX-License-Identifier: MIT
#include <syslog.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/folder_lock.h"
#include "linux/network/dns_file.h"
#include "linux/network/foreign.h"
#include "linux/network/ip_file.h"
#include "linux/network/ipv6_switch.h"
#include "linux/network/leases.h"
#include "linux/network/nic_use.h"
#include "linux/network/restore.h"
#include "linux/network/switches.h"
#include "linux/network/wait.h"
#include "linux/network_file.h"
#include "linux/resolver.h"
#include "linux/staging_folder.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::changeFile;
using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::readFile;
using HostCtl::Lib::replaceFile;
using HostCtl::Lib::syncFolder;
namespace fs = std::filesystem;

namespace {

constexpr const char* kOperation = "ClearNetworkConfig";
constexpr const char* kObject = "the network";
constexpr const char* kCopies = "/var/lib/kiva";
constexpr const char* kCopy = "network-";
constexpr std::size_t kKept = 10;
constexpr const char* kResolverFile = "/etc/resolv.conf";

/// A file outside networkd's folder: what it says and what it shall say, without a text for none.
struct OtherFile {
  std::string path;
  std::string before;
  std::optional<std::string> after;
};

/// The servers and domains that an interface's file of ours names were set with Kiva; those of
/// leases and of others are not in it.
ResolverFile withoutOwn(ResolverFile resolver, const OwnFiles& own) {
  const auto isIn = [](const auto& list) {
    return [&](const auto& one) { return std::find(list.begin(), list.end(), one) != list.end(); };
  };
  for (const auto& name : own.List()) {
    const IniFile file = own.Read(name);
    std::erase_if(resolver.nameServers, isIn(nameServersIn(file)));
    std::erase_if(resolver.search, isIn(searchDomainsIn(file)));
  }
  return resolver;
}

std::vector<OtherFile> otherFiles(const Files& files, const OwnFiles& own) {
  std::vector<OtherFile> others;
  if (files.Exists(kIpv6SwitchFile))
    others.push_back({kIpv6SwitchFile, readFile(files.Path(kIpv6SwitchFile)), std::nullopt});
  const auto resolver = files.Read(kResolverFile);
  if (!resolver || !files.LinkName(kResolverFile).empty()) return others;
  auto after = withResolver(*resolver, withoutOwn(parseResolverFile(*resolver), own));
  if (after != *resolver) others.push_back({kResolverFile, *resolver, std::move(after)});
  return others;
}

/// A folder that is not there yet: there may be several of one second.
std::string newCopy(const std::string& folder) {
  const std::string ofThisSecond = folder + "/" + kCopy + timeText();
  std::string copy = ofThisSecond;
  for (int number = 2; fs::exists(copy); ++number)
    copy = ofThisSecond + "-" + std::to_string(number);
  return copy;
}

/// The times in their names put the oldest first, but for the one just made, `latest`, where the
/// clock was set back.
void removeOldest(const Files& files, const std::string& latest) {
  auto copies = files.List(kCopies);
  std::erase_if(
      copies, [&](const std::string& name) { return name == latest || !name.starts_with(kCopy); });
  for (std::size_t i = 0; i + kKept <= copies.size(); ++i)
    fs::remove_all(files.Path(kCopies) + "/" + copies[i]);
}

/// A folder of its own, which nobody sees before all is in it.
void keepCopies(const Files& files, const std::vector<std::string>& paths) {
  const std::string folder = files.Path(kCopies);
  makeOwnersFolder(folder);
  const StagingFolder staging(folder);
  const std::string made = staging.Path() + "/copy", kept = newCopy(folder);
  makeOwnersFolder(made);
  for (const auto& path : paths)
    replaceFile(made + "/" + fs::path(path).filename().string(), readFile(files.Path(path)), 0600);
  fs::rename(made, kept);
  syncFolder(folder);
  removeOldest(files, fs::path(kept).filename());
  syslog(LOG_USER | LOG_INFO, "The network's configuration is kept in %s", kept.c_str());
}

void write(const Files& files, const OtherFile& other, const std::optional<std::string>& text) {
  const std::string path = files.Path(other.path);
  if (!text) {
    fs::remove(path);
    syncFolder(fs::path(path).parent_path());
  } else if (fs::exists(path)) {
    changeFile(path, *text);
  } else {
    replaceFile(path, *text);
  }
}

void putBack(const Files& files, const OtherFile& other) try {
  write(files, other, other.before);
} catch (const std::system_error& error) {
  syslog(LOG_USER | LOG_ERR, "%s could not be put back: %s", other.path.c_str(), error.what());
}

void clear(const Files& files, SwitchEditor& editor, const std::vector<OtherFile>& others) {
  for (const auto& other : others) write(files, other, other.after);
  for (const auto& name : editor.Own().List())
    if (const auto interface = editor.Own().Read(name).Get("Match", "Name"))
      takeReleaseBack(files, *interface);
  editor.All().clear();
  editor.ApplyAfresh({});
}

/// Whether others configure every interface that our files give addresses to, and one at least.
bool othersTakeOver(const Files& files, const OwnFiles& own) {
  const NicUses uses(files, own, {}, kOperation, NicUses::OpenVswitch::Unasked);
  bool any = false;
  for (const auto& name : own.List()) {
    const IniFile file = own.Read(name);
    const auto interface = file.Get("Match", "Name");
    if (!interface || indexOf(files, *interface) == 0) continue;
    const bool theirs = !uses.ManagerOf(*interface).empty();
    if (!theirs && givesAddresses(file)) return false;
    any = any || theirs;
  }
  return any;
}

/// The adapters that the default network can have afterwards. No switch is taken away that the
/// default one could not replace, and no address that nobody else gives. Where others give them,
/// the network is theirs again without our files, and who has what is told when the default one is
/// made.
std::vector<std::string> nicsToFollow(const Files& files, SwitchEditor& editor) try {
  return nicsForDefault(editor);
} catch (const HostCtlException&) {
  if (!editor.All().empty() || !othersTakeOver(files, editor.Own())) throw;
  return {};
}

/// Who has one of them still, or why nobody knows; empty when all are free.
std::string useOfAny(const Files& files, const OwnFiles& own,
                     const std::vector<std::string>& nics) try {
  const NicUses uses(files, own, {}, kOperation);
  for (const auto& nic : nics)
    if (const auto use = uses.Of(nic); !use.empty()) return nic + " " + use;
  return {};
} catch (const std::exception& error) {
  return error.what();
}

/// networkd takes a moment to take the addresses away that our files gave, which look like somebody
/// else's until then. All is cleared by now, so nothing fails here any more.
void letNetworkdFollow(const Files& files, const OwnFiles& own,
                       const std::vector<std::string>& nics) {
  if (nics.empty()) return;
  std::string use;
  const auto areFree = [&] {
    use = useOfAny(files, own, nics);
    return use.empty();
  };
  if (!waitFor(kInForceWithin, areFree))
    syslog(LOG_USER | LOG_WARNING, "After the network was cleared: %s", use.c_str());
}

}  // namespace

void clearNetwork(const Files& files) try {
  SwitchEditor editor(files, {kOperation, kObject});
  const auto others = otherFiles(files, editor.Own());
  std::vector<std::string> paths;
  for (const auto& name : editor.Own().List())
    paths.push_back(std::string(kNetworkFolder) + "/" + name);
  for (const auto& other : others) paths.push_back(other.path);
  if (paths.empty()) return;
  const auto nics = nicsToFollow(files, editor);
  keepCopies(files, paths);
  try {
    clear(files, editor, others);
  } catch (...) {
    for (const auto& other : others) putBack(files, other);
    throw;
  }
  letNetworkdFollow(files, editor.Own(), nics);
} catch (const std::system_error& error) {
  throw HostCtlException(kOperation, kObject, error.what());
}

}  // namespace HostLinux
