// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostctl/system/records.h"
#include "linux/files.h"

namespace HostLinux {

/// The machine's own description of itself: DMI, the management controller, storage, modules. A
/// machine without DMI (many virtual ones, most ARM boards) has empty texts, and so has one whose
/// maker left the fields at the firmware's filler ("To Be Filled By O.E.M.").

/// The service tag is the chassis' serial number.
HostCtl::System::HardwareRecord readHardware(const Files& files);

/// SCSI hosts in number order, then disk controllers outside SCSI (NVMe, virtio), as phba0, phba1,
/// …
std::vector<HostCtl::System::StorageAdapter> readStorageAdapters(const Files& files);

/// Empty for a module that is not loaded, is part of the kernel or has no version of its own.
std::string readModuleVersion(const Files& files, std::string module);

}  // namespace HostLinux
