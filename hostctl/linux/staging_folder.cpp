// SPDX-License-Identifier: MIT
#include "linux/staging_folder.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "hostctl/lib/whole_file.h"
#include "linux/folder_lock.h"

namespace HostLinux {

using HostCtl::Lib::publishFile;

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
