// SPDX-License-Identifier: MIT
#include "linux/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>

namespace HostLinux {

using HostCtl::Lib::Descriptor;

namespace {

constexpr std::chrono::milliseconds kLook{20};

}  // namespace

Descriptor lockFolder(const std::string& folder, std::chrono::milliseconds turnWithin) {
  Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!opened) throw std::system_error(errno, std::generic_category(), folder);
  const auto end = std::chrono::steady_clock::now() + turnWithin;
  while (flock(opened.Get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() > end)
      throw std::system_error(errno, std::generic_category(), folder);
    std::this_thread::sleep_for(kLook);
  }
  return opened;
}

}  // namespace HostLinux
