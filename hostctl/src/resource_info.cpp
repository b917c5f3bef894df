// SPDX-License-Identifier: MIT
#include "src/enter.h"
#include "tarnctl/system/resource_info_impl.h"

namespace TarnCtl::System {

bool ResourceInfoImpl::HasRunningVirtualMachines() {
  return enter("HasRunningVirtualMachines").HasRunningVirtualMachines();
}

}  // namespace TarnCtl::System
