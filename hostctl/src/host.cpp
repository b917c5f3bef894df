// SPDX-License-Identifier: MIT
#include "hostctl/system/host.h"

#include <cassert>

#include "hostseam/driver.h"
#include "tarnctl/system/system_info_impl.h"

namespace {

struct HostInUse {
  std::unique_ptr<HostCtl::Lib::Platform> platform;
  std::unique_ptr<HostSeam::Driver> driver;
};

/// Never destroyed: a thread that nobody joins may still be using the host when the program ends.
HostInUse& hostInUse() {
  static auto& host = *new HostInUse;
  return host;
}

class HostImpl : public HostCtl::System::Host {
 public:
  std::unique_ptr<HostCtl::System::HardwareInfo> GetHardwareInfo() override {
    return std::make_unique<TarnCtl::System::HardwareInfoImpl>();
  }
  std::unique_ptr<HostCtl::System::StorageInfo> GetStorageInfo() override {
    return std::make_unique<TarnCtl::System::StorageInfoImpl>();
  }
  std::unique_ptr<HostCtl::System::SystemInfo> GetSystemInfo() override {
    return std::make_unique<TarnCtl::System::SystemInfoImpl>();
  }
};

}  // namespace

namespace HostSeam {

void useHost(std::unique_ptr<HostCtl::Lib::Platform> platform, std::unique_ptr<Driver> driver) {
  hostInUse() = {std::move(platform), std::move(driver)};
}

Driver& driver() {
  assert(hostInUse().driver);
  return *hostInUse().driver;
}

}  // namespace HostSeam

namespace HostCtl::Lib {

Platform& platform() {
  assert(hostInUse().platform);
  return *hostInUse().platform;
}

}  // namespace HostCtl::Lib

namespace HostCtl::System {

std::unique_ptr<Host> HostFactory::GetHost() {
  HostSeam::driver().Enter("GetHost");
  return std::make_unique<HostImpl>();
}

}  // namespace HostCtl::System
