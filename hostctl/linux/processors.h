// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

#include "hostctl/system/records.h"
#include "linux/files.h"

namespace HostLinux {

/// The processors from the text of /proc/cpuinfo, whose keys differ from one architecture to the
/// next. A machine that tells no package numbers has one package.
HostCtl::System::ProcessorRecord processorsFrom(std::string_view cpuinfo);

/// The usable memory from the text of /proc/meminfo; page size in bytes.
HostCtl::System::MemoryRecord memoryFrom(std::string_view meminfo, std::uint64_t pageSize);

HostCtl::System::ProcessorRecord readProcessors(const Files& files);
HostCtl::System::MemoryRecord readMemory(const Files& files);

}  // namespace HostLinux
