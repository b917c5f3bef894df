// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hostctl/system/system_info.h"

namespace HostCtl::System {

/// The host as the factory hands it out: a way to each of its information objects.
class Host {
 public:
  virtual ~Host() = default;
  virtual std::unique_ptr<HardwareInfo> GetHardwareInfo() = 0;
  virtual std::unique_ptr<StorageInfo> GetStorageInfo() = 0;
  virtual std::unique_ptr<SystemInfo> GetSystemInfo() = 0;
};

/// Hands out the host that the program runs on. Throws HostCtlException when it cannot be reached.
class HostFactory {
 public:
  static std::unique_ptr<Host> GetHost();
};

}  // namespace HostCtl::System
