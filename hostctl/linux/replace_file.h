// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/lib/whole_file.h"

namespace HostLinux {

// How this machine's own files are written.
using HostCtl::Lib::changeFile;
using HostCtl::Lib::publishFile;
using HostCtl::Lib::replaceFile;
using HostCtl::Lib::syncFolder;

}  // namespace HostLinux
