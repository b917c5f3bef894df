// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"

namespace HostLinux {

/// A Debian 12 that systemd runs, in a container that is booted for one script and leaves nothing
/// behind. It has no network but its own, and sees none of this machine's files but /payload.
class Container {
 public:
  /// A Debian with these packages besides systemd. It is made once, which takes a minute, and kept
  /// in the build folder.
  explicit Container(const std::string& packages);

  /// Why this machine cannot run one; empty where it can. A test skips with this.
  const std::string& Obstacle() const { return obstacle_; }

  /// A file of the container's /payload.
  void Write(const std::string& name, const std::string& text) const { payload_.Write(name, text); }

  /// Has the script begin on a machine with everything that the build installs. Throws
  /// std::runtime_error when the build is not complete.
  void InstallBuild();

  /// Gives the container a device of this machine under a path of its own.
  void Bind(const std::string& device, const std::string& path);

  /// Boots it and runs the script there as root, for five minutes at most.
  Ended Run(const std::string& script) const;

 private:
  Harness::TemporaryFolder payload_;
  std::string obstacle_;
  std::string tree_;
  std::string options_;
  std::string prologue_;
};

}  // namespace HostLinux
