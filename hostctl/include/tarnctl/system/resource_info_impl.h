// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/system/resource_info.h"

namespace TarnCtl::System {

/// The host that the program runs on, asked afresh each time.
class ResourceInfoImpl : public HostCtl::System::ResourceInfo {
 public:
  bool HasRunningVirtualMachines() override;
};

}  // namespace TarnCtl::System
