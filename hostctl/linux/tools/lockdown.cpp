// SPDX-License-Identifier: MIT
#include "linux/tools/lockdown.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <thread>

#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/run_program.h"
#include "linux/text.h"
#include "linux/tools/remote_logins.h"
#include "linux/tools/units.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;
using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::replaceFile;

namespace {

constexpr const char* kExceptions = "/etc/corvo/lockdown-exceptions";
constexpr const char* kAccounts = "/var/lib/corvo/lockdown";
constexpr const char* kPamFolder = "/etc/pam.d";
constexpr const char* kSshServer = "/usr/sbin/sshd";
constexpr const char* kSshConfiguration = "/etc/ssh/sshd_config";
constexpr const char* kSshFolder = "/etc/ssh/sshd_config.d";
constexpr const char* kSshDropIn = "/etc/ssh/sshd_config.d/lockdown.conf";
constexpr const char* kSshUnit = "ssh.service";

constexpr std::array kRemoteServices = {"sshd", "cockpit",     "remote", "rlogin", "rsh",
                                        "ftp",  "xrdp-sesman", "vsftpd", "proftpd"};

constexpr std::chrono::seconds kCheckLimit{20};
constexpr std::chrono::seconds kOthersLimit{10};
constexpr std::chrono::milliseconds kLook{50};

bool isAccountName(std::string_view name) {
  constexpr std::string_view kAllowed =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-";
  return !name.empty() && name.front() != '-' &&
         name.find_first_not_of(kAllowed) == std::string_view::npos;
}

/// One change of lockdown, under the name that an operator reads in a failure.
class Change {
 public:
  Change(const Files& files, const char* operation) : files_(files), operation_(operation) {}

  void Enter() const;
  void Leave() const;

  [[noreturn]] void Fail(const std::string& object, const std::string& cause) const {
    throw HostCtlException(operation_, object, cause);
  }

 private:
  void Replace(const std::string& path, std::string_view text, mode_t mode = 0644) const;
  /// Whether there was something to remove.
  bool Remove(const std::string& path) const;
  /// Gives every service of remote logins the text that `change` makes of its own.
  template <typename Function>
  void ChangeServices(Function change) const;
  std::optional<std::string> SshComplaint() const;
  void RefuseSsh(const std::vector<std::string>& accounts) const;
  void ReloadSsh() const;

  const Files& files_;
  const char* operation_;
};

void Change::Replace(const std::string& path, std::string_view text, mode_t mode) const try {
  replaceFile(path, text, mode);
} catch (const std::system_error& error) {
  Fail(path, error.code().message());
}

bool Change::Remove(const std::string& path) const {
  std::error_code error;
  const bool removed = std::filesystem::remove(files_.Path(path), error);
  if (error) Fail(path, error.message());
  return removed;
}

template <typename Function>
void Change::ChangeServices(Function change) const {
  for (const char* name : kRemoteServices) {
    const std::string path = files_.RealPath(std::string(kPamFolder) + "/" + name);
    if (path.empty()) continue;
    const auto text = Files().Read(path);
    struct stat state {};
    if (!text || stat(path.c_str(), &state) != 0) Fail(path, "cannot be read");
    if (const std::string changed = change(*text); changed != *text)
      Replace(path, changed, state.st_mode & 07777);
  }
}

/// What the SSH server has against its configuration.
std::optional<std::string> Change::SshComplaint() const {
  const std::string server = files_.Path(kSshServer);
  const ProgramResult result =
      runProgram({server, {server, "-t", "-f", files_.Path(kSshConfiguration)}}, kCheckLimit);
  return result.status == 0 ? std::nullopt : std::optional(causeOf(result));
}

// A server that complains already, because it has no keys yet or was never started, says nothing
// about what is new.
void Change::RefuseSsh(const std::vector<std::string>& accounts) const {
  const bool complained = SshComplaint().has_value();
  Replace(files_.Path(kSshDropIn), sshRefusal(accounts));
  if (complained) return;
  if (const auto complaint = SshComplaint()) Fail(kSshDropIn, *complaint);
}

void Change::ReloadSsh() const {
  if (!hasSystemd(files_) || !readUnit(operation_, kSshUnit).active) return;
  systemctl(operation_, kSshUnit, {"reload", kSshUnit});
}

void Change::Enter() const {
  const auto accounts = parseLockdownExceptions(files_.Read(kExceptions).value_or(""));
  std::string list;
  for (const std::string& account : accounts) list += account + "\n";
  const std::string path = files_.Path(kAccounts);
  Replace(path, list);
  ChangeServices([&](const std::string& text) { return markedService(text, path); });
  if (!files_.Exists(kSshServer)) return;
  RefuseSsh(accounts);
  ReloadSsh();
}

// A server that was refused nothing is left alone: it may not even be able to reload.
void Change::Leave() const {
  const bool refused = Remove(kSshDropIn);
  ChangeServices(unmarkedService);
  Remove(kAccounts);
  if (refused) ReloadSsh();
}

/// Keeps other changes of lockdown away while it is there.
class OneAtATime {
 public:
  OneAtATime(const Files& files, const Change& change)
      : folder_(open(files.Path(kPamFolder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (!folder_) change.Fail(kPamFolder, std::strerror(errno));
    const auto end = std::chrono::steady_clock::now() + kOthersLimit;
    while (flock(folder_.Get(), LOCK_EX | LOCK_NB) != 0) {
      if (std::chrono::steady_clock::now() >= end)
        change.Fail(kPamFolder, "another change is under way");
      std::this_thread::sleep_for(kLook);
    }
  }

 private:
  Descriptor folder_;
};

/// Why lockdown cannot be entered.
std::optional<std::string> obstacle(const Files& files) {
  const auto mayWrite = [&](const char* path) {
    return access(files.Path(path).c_str(), W_OK) == 0;
  };
  const auto notWritable = [](const char* path) {
    return std::string(path) + " cannot be written: " + std::strerror(errno);
  };
  if (!mayWrite(kPamFolder)) return notWritable(kPamFolder);
  if (!files.Exists(kSshServer)) return std::nullopt;
  if (!mayWrite(kSshFolder)) return notWritable(kSshFolder);
  if (!readsDropIns(files.Read(kSshConfiguration).value_or(""), files.Path(kSshFolder)))
    return std::string(kSshConfiguration) + " does not include " + kSshFolder + "/*.conf";
  return std::nullopt;
}

void enter(const Files& files) {
  const Change change(files, "EnterLockdown");
  if (const auto why = obstacle(files)) change.Fail("remote logins", *why);
  const OneAtATime alone(files, change);
  const bool fresh = !files.Exists(kAccounts);
  try {
    change.Enter();
  } catch (const HostCtlException&) {
    // What was locked before stays so: a failure opens nothing.
    if (fresh) try {
        change.Leave();
      } catch (const HostCtlException&) {
        // The first failure is the one to tell.
      }
    throw;
  }
}

void leave(const Files& files) {
  const Change change(files, "LeaveLockdown");
  const OneAtATime alone(files, change);
  change.Leave();
}

}  // namespace

bool isLockdownEnabled(const Files& files) {
  const auto list = files.Read(kAccounts);
  if (!list && !files.Exists(kAccounts) && errno == EACCES)
    throw HostCtlException("IsLockdownEnabled", kAccounts, std::strerror(errno));
  if (!list) return false;
  const bool marked = std::all_of(kRemoteServices.begin(), kRemoteServices.end(), [&](auto* name) {
    const std::string path = std::string(kPamFolder) + "/" + name;
    const auto text = files.Read(path);
    return text ? *text == markedService(*text, files.Path(kAccounts)) : !files.Exists(path);
  });
  return marked && (!files.Exists(kSshServer) ||
                    files.Read(kSshDropIn) == sshRefusal(parseLockdownExceptions(*list)));
}

bool isLockdownPossible(const Files& files) {
  return !obstacle(files);
}

void setLockdown(const Files& files, bool enabled) {
  (enabled ? enter : leave)(files);
}

std::vector<std::string> parseLockdownExceptions(std::string_view text) {
  std::vector<std::string> accounts;
  for (std::string_view line : lines(text)) {
    line = trim(line.substr(0, line.find('#')));
    if (isAccountName(line)) accounts.emplace_back(line);
  }
  return accounts;
}

}  // namespace HostLinux
