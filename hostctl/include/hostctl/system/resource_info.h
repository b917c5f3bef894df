// SPDX-License-Identifier: MIT
#pragma once

namespace HostCtl::System {

/// What runs on the host. Throws HostCtlException when the host fails.
class ResourceInfo {
 public:
  virtual ~ResourceInfo() = default;
  /// False where there is no virtualisation service; true where it does not answer.
  virtual bool HasRunningVirtualMachines() = 0;
};

}  // namespace HostCtl::System
