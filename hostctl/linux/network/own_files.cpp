// SPDX-License-Identifier: MIT
#include "linux/network/own_files.h"

#include <syslog.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/folder_lock.h"
#include "linux/network/networkd_bus.h"
#include "linux/network_file.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::isHalfWritten;
using HostCtl::Lib::replaceFile;
using HostCtl::Lib::syncFolder;
namespace fs = std::filesystem;

namespace {

constexpr const char* kLock = "/run/kiva-network.lock";
constexpr std::size_t kLongestInterface = 15;

std::string pathOf(const std::string& name) {
  return std::string(kNetworkFolder) + "/" + name;
}

bool isDevice(const FileChange& change) {
  return change.name.ends_with(".netdev");
}

/// 0: a device comes, 1: a link is left alone, 2: one is no port of a bridge or no more, 3: one is,
/// 4: a device goes. So at no time has a bridge both the port that it had and the one that it gets,
/// which would be a loop.
int rank(const FileChange& change) {
  if (isDevice(change)) return change.text ? 0 : 4;
  if (!change.text) return 1;
  return IniFile(*change.text).Get("Network", "Bridge") ? 3 : 2;
}

/// One step of a way back, which goes on whatever fails.
void attempt(const std::function<void()>& step) try {
  step();
} catch (const std::exception& error) {
  syslog(LOG_USER | LOG_ERR, "The network's old files could not be put back: %s", error.what());
}

}  // namespace

std::string ownFileName(const std::string& subject, const std::string& kind) {
  if (!isPlainName(subject) || subject.size() > kLongestInterface)
    throw HostCtlException("write a network file", subject, "not the name of an interface");
  return std::string(kOwnNetworkFiles) + subject + "." + kind;
}

std::vector<FileChange> inWritingOrder(std::vector<FileChange> changes) {
  std::stable_sort(changes.begin(), changes.end(),
                   [](const FileChange& a, const FileChange& b) { return rank(a) < rank(b); });
  return changes;
}

void makeReadableFolder(const std::string& folder) {
  using enum fs::perms;
  if (fs::is_directory(folder)) return;
  makeReadableFolder(fs::path(folder).parent_path());
  if (fs::create_directory(folder))
    fs::permissions(folder, owner_all | group_read | group_exec | others_read | others_exec);
}

std::vector<std::string> OwnFiles::List() const {
  auto names = files_.List(kNetworkFolder);
  std::erase_if(names, [](const std::string& name) {
    return !name.starts_with(kOwnNetworkFiles) ||
           !(name.ends_with(".network") || name.ends_with(".netdev"));
  });
  return names;
}

std::optional<std::string> OwnFiles::Text(const std::string& name) const {
  return files_.Read(pathOf(name));
}

IniFile OwnFiles::Read(const std::string& name) const {
  return IniFile(Text(name).value_or(""));
}

bool OwnFiles::Exists(const std::string& name) const {
  return files_.Exists(pathOf(name));
}

NetworkLock OwnFiles::Lock(std::chrono::milliseconds turnWithin) const try {
  const std::string path = files_.Path(kLock);
  makeReadableFolder(fs::path(path).parent_path());
  NetworkLock lock(lockFile(path, turnWithin));
  RemoveHalfWritten();
  return lock;
} catch (const std::system_error& error) {
  const bool busy = error.code() == std::errc::operation_would_block;
  throw HostCtlException("change", "the network",
                         busy ? "another change of it is under way" : error.what());
}

void OwnFiles::RemoveHalfWritten() const {
  std::error_code ignored;
  for (const auto& name : files_.List(kNetworkFolder))
    if (name.starts_with(kOwnNetworkFiles) && isHalfWritten(name))
      fs::remove(files_.Path(pathOf(name)), ignored);
}

void OwnFiles::Write(const FileChange& change) const {
  const std::string path = files_.Path(pathOf(change.name));
  if (change.text) {
    replaceFile(path, *change.text);
  } else {
    fs::remove(path);
    syncFolder(fs::path(path).parent_path());
  }
}

void OwnFiles::DemandReadable(const std::string& operation, const std::string& object,
                              const std::string& name) const {
  std::error_code ignored;
  if (!Text(name) && fs::exists(fs::symlink_status(files_.Path(pathOf(name)), ignored)))
    throw HostCtlException(operation, object, pathOf(name) + " is no file that can be read");
}

void OwnFiles::PutBack(const std::vector<FileChange>& old, const TakeOver* takeOver) const {
  std::for_each(old.rbegin(), old.rend(),
                [&](const FileChange& change) { attempt([&] { Write(change); }); });
  if (takeOver) attempt(*takeOver);
}

bool OwnFiles::Change(const std::string& operation, const std::string& object,
                      std::vector<FileChange> changes, const TakeOver& takeOver,
                      Equal equal) const {
  for (const auto& change : changes) DemandReadable(operation, object, change.name);
  std::erase_if(changes, [&](const FileChange& one) { return Text(one.name) == one.text; });
  if (changes.empty() && equal == Equal::InForce) return false;
  changes = inWritingOrder(std::move(changes));
  std::vector<FileChange> old;
  const TakeOver* again = nullptr;
  try {
    makeReadableFolder(files_.Path(kNetworkFolder));
    for (const auto& change : changes) {
      FileChange before{change.name, Text(change.name)};
      Write(change);
      old.push_back(std::move(before));
    }
    if (!old.empty()) again = &takeOver;
    takeOver();
  } catch (const std::system_error& error) {
    PutBack(old, again);
    throw HostCtlException(operation, object, error.what());
  } catch (...) {
    PutBack(old, again);
    throw;
  }
  return true;
}

bool OwnFiles::Change(const std::string& operation, const std::string& object,
                      std::vector<FileChange> changes) const {
  return Change(operation, object, std::move(changes), [&] { reloadNetworkd(operation, object); });
}

}  // namespace HostLinux
