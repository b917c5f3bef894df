// SPDX-License-Identifier: MIT
#include "network/hosts_backup.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "core/log.h"
#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"
#include "hostctl/lib/platform.h"
#include "hostctl/lib/whole_file.h"
#include "tarnctl/network/hosts_file_impl.h"

namespace Kiva {

using namespace HostCtl::Lib;
namespace fs = std::filesystem;

namespace {

enum class Turn { Now, Awaited };

/// The hosts file and its backup, ours until this goes.
class LockedHosts {
 public:
  explicit LockedHosts(Turn turn)
      : hosts_(platform().HostPath("/etc/hosts")),
        backup_(platform().HostPath("/etc/hosts.backup")),
        lock_(open(Folder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    const int how = LOCK_EX | (turn == Turn::Now ? LOCK_NB : 0);
    while (lock_ && flock(lock_.Get(), how) != 0)
      if (errno != EINTR) lock_.Close();
    if (!lock_ && turn == Turn::Awaited) logErrno("failed to lock the folder of /etc/hosts");
  }

  bool IsOurs() const { return static_cast<bool>(lock_); }

  /// True when no backup is left: the file is whole.
  bool Repair() const {
    unlink(besideOf(backup_).c_str());
    std::error_code ignored;
    unlink(besideOf(fs::weakly_canonical(hosts_, ignored)).c_str());
    if (!fs::exists(fs::symlink_status(backup_, ignored))) return true;
    logInfo("Putting /etc/hosts back from /etc/hosts.backup");
    return Restore();
  }

  bool BackUp() const try {
    const std::string beside = besideOf(backup_);
    overwriteFile(beside, readFile(hosts_));
    publishFile(beside, backup_, accessOf(hosts_));
    return true;
  } catch (const std::system_error& error) {
    unlink(besideOf(backup_).c_str());
    logInfo("failed to backup /etc/hosts: %s", error.code().message().c_str());
    return false;
  }

  bool Restore() const try {
    if (!PutInPlace()) PutTextInPlace();
    return true;
  } catch (const std::system_error& error) {
    logInfo("failed to restore /etc/hosts: %s", error.code().message().c_str());
    return false;
  }

 private:
  std::string Folder() const { return fs::path(hosts_).parent_path(); }

  /// False where the name is a link, or a mount point, that has to stay.
  bool PutInPlace() const {
    if (fs::is_symlink(hosts_)) return false;
    if (rename(backup_.c_str(), hosts_.c_str()) == 0) return syncFolder(Folder()), true;
    if (errno == EBUSY) return false;
    throw std::system_error(errno, std::generic_category());
  }

  void PutTextInPlace() const {
    changeFile(hosts_, readFile(backup_));
    fs::remove(backup_);
    syncFolder(Folder());
  }

  const std::string hosts_, backup_;
  Descriptor lock_;
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

// A backup that could not be put back is never overwritten: it is the only whole file left.
bool resolveByServers(const std::string& name, const std::stop_token& abandoned) {
  const LockedHosts hosts(Turn::Awaited);
  if (abandoned.stop_requested()) return false;
  if (!hosts.IsOurs() || !hosts.Repair() || !hosts.BackUp()) return false;
  const bool found = removeEntry(name) && platform().ResolveName(name);
  hosts.Restore();
  return found;
}

}  // namespace Kiva
