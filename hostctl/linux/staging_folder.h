// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>

#include "hostctl/lib/descriptor.h"

namespace HostLinux {

/// Where a file that another program writes is made ready, out of everybody's sight: a folder that
/// only its owner can enter, inside the folder that the file is for. It goes with all that is still
/// in it, and what a power cut left goes when the next one is made. There is one at a time in a
/// folder, so that whoever has it also has the folder's names to himself.
class StagingFolder {
 public:
  /// Waits up to five seconds for another one in `folder` to go. Throws std::system_error.
  explicit StagingFolder(const std::string& folder);
  StagingFolder(const StagingFolder&) = delete;
  StagingFolder& operator=(const StagingFolder&) = delete;
  ~StagingFolder();

  const std::string& Path() const { return path_; }
  /// Moves the file called `name` to its folder as `as`, for its owner alone and on the disk; in
  /// the place of an older one. Throws std::system_error.
  void Publish(const std::string& name, const std::string& as) const;

 private:
  std::string folder_;
  std::string path_;
  HostCtl::Lib::Descriptor lock_;
};

}  // namespace HostLinux
