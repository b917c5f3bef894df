// SPDX-License-Identifier: MIT
#include "linux/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

namespace HostLinux {

using HostCtl::Lib::Descriptor;

namespace {

constexpr std::chrono::milliseconds kLook{20};

Descriptor locked(Descriptor opened, const std::string& path,
                  std::chrono::milliseconds turnWithin) {
  if (!opened) throw std::system_error(errno, std::generic_category(), path);
  const auto end = std::chrono::steady_clock::now() + turnWithin;
  while (flock(opened.Get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() > end)
      throw std::system_error(errno, std::generic_category(), path);
    std::this_thread::sleep_for(kLook);
  }
  return opened;
}

}  // namespace

Descriptor lockFolder(const std::string& folder, std::chrono::milliseconds turnWithin) {
  return locked(Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)), folder,
                turnWithin);
}

Descriptor lockFile(const std::string& path, std::chrono::milliseconds turnWithin) {
  constexpr mode_t kOwnersAlone = 0600;
  return locked(
      Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, kOwnersAlone)), path,
      turnWithin);
}

void makeOwnersFolder(const std::string& folder) {
  std::filesystem::create_directories(folder);
  std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
}

}  // namespace HostLinux
