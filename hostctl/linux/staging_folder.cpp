// SPDX-License-Identifier: MIT
#include "linux/staging_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

#include "linux/replace_file.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;

namespace {

constexpr std::chrono::seconds kTurnWithin{5};
constexpr std::chrono::milliseconds kLook{20};

Descriptor lockFolder(const std::string& folder) {
  Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!opened) throw std::system_error(errno, std::generic_category(), folder);
  const auto end = std::chrono::steady_clock::now() + kTurnWithin;
  while (flock(opened.Get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() > end)
      throw std::system_error(errno, std::generic_category(), folder);
    std::this_thread::sleep_for(kLook);
  }
  return opened;
}

}  // namespace

StagingFolder::StagingFolder(const std::string& folder)
    : folder_(folder), path_(folder + "/.kiva-staging"), lock_(lockFolder(folder)) {
  std::filesystem::remove_all(path_);
  if (mkdir(path_.c_str(), 0700) != 0)
    throw std::system_error(errno, std::generic_category(), path_);
}

StagingFolder::~StagingFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void StagingFolder::Publish(const std::string& name, const std::string& as) const {
  publishFile(path_ + "/" + name, folder_ + "/" + as, 0600);
}

}  // namespace HostLinux
