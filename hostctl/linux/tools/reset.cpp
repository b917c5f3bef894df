// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/network/ipv6_switch.h"
#include "linux/network_file.h"
#include "linux/tools/configuration.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;
using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::replaceFile;
using HostCtl::Lib::syncFolder;
namespace fs = std::filesystem;

namespace {

constexpr const char* kOperation = "ResetConfiguration";
constexpr const char* kShipped = "/usr/share/kiva/etc-corvo";
constexpr const char* kInForce = "/etc/corvo";
constexpr const char* kFresh = "/etc/corvo.reset";
constexpr const char* kNote = "/var/lib/corvo/reset";

/// Has everything on the disk of `folder` really there.
void syncDisk(const std::string& folder) {
  const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!opened || syncfs(opened.Get()) != 0)
    throw std::system_error(errno, std::generic_category(), folder);
}

void exchange(const std::string& one, const std::string& other) {
  if (renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) != 0)
    throw std::system_error(errno, std::generic_category(), other);
}

void putBackShipped(const std::string& shipped, const std::string& inForce,
                    const std::string& fresh) {
  fs::remove_all(fresh);
  fs::copy(shipped, fresh, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  fs::create_directory(inForce);
  syncDisk(fresh);
  exchange(fresh, inForce);
  syncFolder(fs::path(inForce).parent_path());
  fs::remove_all(fresh);
}

void removeOwnNetworkFiles(const Files& files) {
  for (const std::string& name : files.List(kNetworkFolder))
    if (name.starts_with(kOwnNetworkFiles)) fs::remove_all(files.Path(kNetworkFolder) + "/" + name);
  syncFolder(files.Path(kNetworkFolder));
  fs::remove(files.Path(kIpv6SwitchFile));
  syncFolder(fs::path(files.Path(kIpv6SwitchFile)).parent_path());
}

}  // namespace

void resetConfiguration(const Files& files) try {
  if (!fs::is_directory(files.Path(kShipped)))
    throw HostCtlException(kOperation, kShipped, "is not there");
  replaceFile(files.Path(kNote), saveConfiguration(files) + "\n", 0600);
} catch (const std::system_error& error) {
  throw HostCtlException(kOperation, kNote, error.code().message());
}

bool applyReset(const Files& files) {
  if (!files.Exists(kNote)) return false;
  putBackShipped(files.Path(kShipped), files.Path(kInForce), files.Path(kFresh));
  removeOwnNetworkFiles(files);
  fs::remove(files.Path(kNote));
  syncFolder(fs::path(files.Path(kNote)).parent_path());
  return true;
}

}  // namespace HostLinux
