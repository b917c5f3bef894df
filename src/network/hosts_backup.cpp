// SPDX-License-Identifier: MIT
#include "network/hosts_backup.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "core/log.h"
#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"
#include "hostctl/lib/platform.h"
#include "hostctl/lib/whole_file.h"
#include "hostctl/network/hosts_file.h"
#include "tarnctl/network/hosts_file_impl.h"

namespace Kiva {

using namespace HostCtl::Lib;
using HostCtl::Network::withHostNameOf;
using HostCtl::Network::withoutHostName;
namespace fs = std::filesystem;

namespace {

enum class Turn { Now, Awaited };

std::system_error lastError() {
  return {errno, std::generic_category()};
}

/// Has `work` done; logs where it fails.
template <typename Work>
bool tried(const char* what, const Work& work) try {
  work();
  return true;
} catch (const std::system_error& error) {
  logInfo("failed to %s /etc/hosts: %s", what, error.code().message().c_str());
  return false;
} catch (const std::exception& error) {
  logInfo("failed to %s /etc/hosts: %s", what, error.what());
  return false;
}

/// The hosts file and its backup, ours until this goes or frees them. A backup is ours where a
/// second name, which nobody else gives, is the same file.
class LockedHosts {
 public:
  explicit LockedHosts(Turn turn)
      : hosts_(platform().HostPath("/etc/hosts")),
        backup_(platform().HostPath("/etc/hosts.backup")),
        mark_(backup_ + ".kiva"),
        lock_(open(platform().HostPath(HostCtl::Network::kHostsFileLock).c_str(),
                   O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600)) {
    if (lock_ && Lock(turn)) return;
    if (errno == EWOULDBLOCK)
      logInfo("Leaving /etc/hosts to another console's test");
    else
      logInfo("failed to lock /etc/hosts: %s", lastError().code().message().c_str());
    lock_.Close();
  }

  bool IsOurs() const { return static_cast<bool>(lock_); }
  void Free() { lock_.Close(); }

  /// True when no backup of ours is left: the file is whole.
  bool Repair() const {
    std::error_code unknown;
    for (const std::string& file : {mark_, fs::weakly_canonical(hosts_, unknown).string()})
      if (!file.empty()) unlink(besideOf(file).c_str());
    if (IsBackupOurs()) {
      logInfo("Putting /etc/hosts back from /etc/hosts.backup");
      return Restore();
    }
    KeepWhatOthersLeft();
    return true;
  }

  bool BackUp() {
    return tried("backup", [this] { MakeBackup(); });
  }

  /// A name whose entry was taken out meanwhile stands for the change that this undoes: what others
  /// changed stays. Without one the file becomes what was backed up, byte for byte.
  bool Restore(const std::optional<std::string>& name = std::nullopt) const {
    return tried("restore", [&] {
      const std::string before = before_ ? *before_ : readFile(mark_);
      if (!(name && KeepOthersChanges(before, *name)) && !PutInPlace(before))
        PutTextInPlace(before);
      fs::remove(mark_);
      syncFolder(Folder());
    });
  }

 private:
  bool Lock(Turn turn) const {
    const int how = LOCK_EX | (turn == Turn::Now ? LOCK_NB : 0);
    while (flock(lock_.Get(), how) != 0)
      if (errno != EINTR) return false;
    return true;
  }

  std::string Folder() const { return fs::path(hosts_).parent_path(); }

  bool IsBackupOurs() const {
    std::error_code ignored;
    return !fs::is_symlink(backup_, ignored) && fs::equivalent(backup_, mark_, ignored);
  }

  // A backup that was there before is somebody else's, and no name for ours any more.
  void MakeBackup() try {
    const std::string beside = besideOf(mark_);
    before_ = readFile(hosts_);
    overwriteFile(beside, *before_);
    publishFile(beside, mark_, accessOf(hosts_));
    if (link(mark_.c_str(), backup_.c_str()) != 0) throw lastError();
    syncFolder(Folder());
  } catch (const std::system_error&) {
    unlink(besideOf(mark_).c_str());
    unlink(mark_.c_str());
    throw;
  }

  /// False where nobody else has changed the file.
  bool KeepOthersChanges(const std::string& before, const std::string& name) const {
    if (!fs::exists(hosts_)) return false;
    const std::string now = readFile(hosts_);
    if (now == before || now == withoutHostName(before, name)) return false;
    logInfo("/etc/hosts was changed meanwhile: keeping that, and the entry of %s", name.c_str());
    PutTextInPlace(withHostNameOf(now, before, name));
    return true;
  }

  /// False where the name is a link, or a mount point, that has to stay, or others have taken the
  /// backup or written into it.
  bool PutInPlace(const std::string& before) const {
    if (fs::is_symlink(hosts_) || !IsBackupOurs() || readFile(backup_) != before) return false;
    if (rename(backup_.c_str(), hosts_.c_str()) == 0) return syncFolder(Folder()), true;
    if (errno == EBUSY) return false;
    throw lastError();
  }

  void PutTextInPlace(const std::string& text) const {
    changeFile(hosts_, text);
    if (IsBackupOurs()) fs::remove(backup_);
    syncFolder(Folder());
  }

  /// A mark whose backup others took, before a kill, may be the only whole file.
  void KeepWhatOthersLeft() const {
    std::error_code none;
    if (!fs::exists(mark_, none)) return;
    tried("look at", [this] {
      if (readFile(mark_) == readFile(hosts_)) {
        fs::remove(mark_);
        return;
      }
      fs::rename(mark_, mark_ + "-kept");
      logInfo("/etc/hosts is not what was backed up: that is kept in %s-kept", mark_.c_str());
    });
  }

  const std::string hosts_, backup_, mark_;
  /// What was backed up, whatever becomes of the files.
  std::optional<std::string> before_;
  Descriptor lock_;
};

/// Puts the file back when it goes, or before.
class PutBack {
 public:
  explicit PutBack(LockedHosts& hosts) : hosts_(hosts) {}
  ~PutBack() { Now(); }
  PutBack(const PutBack&) = delete;
  PutBack& operator=(const PutBack&) = delete;

  void SetRemoved(const std::string& name) { removed_ = name; }
  void Now() {
    if (std::exchange(done_, true)) return;
    hosts_.Restore(removed_);
    hosts_.Free();
  }

 private:
  LockedHosts& hosts_;
  std::optional<std::string> removed_;
  bool done_ = false;
};

bool removeEntry(const std::string& name) try {
  TarnCtl::Network::HostsFileImpl().RemoveEntryByHostName(name);
  return true;
} catch (const HostCtlException& exception) {
  logError("%s", exception.what());
  return false;
}

}  // namespace

void repairHostsFile() {
  const LockedHosts hosts(Turn::Now);
  if (hosts.IsOurs()) hosts.Repair();
}

// A backup that could not be put back is never overwritten: it is the only whole file left. Who
// abandons a resolution has the file back at once, whatever the servers take.
bool resolveByServers(const std::string& name, const std::stop_token& abandoned) {
  LockedHosts hosts(Turn::Awaited);
  if (abandoned.stop_requested() || !hosts.IsOurs()) return false;
  if (!hosts.Repair() || !hosts.BackUp()) return false;
  PutBack putBack(hosts);
  const bool removed = removeEntry(name);
  if (removed) putBack.SetRemoved(name);
  const std::stop_callback early(abandoned, [&putBack] { putBack.Now(); });
  return removed && !abandoned.stop_requested() && platform().ResolveName(name);
}

}  // namespace Kiva
