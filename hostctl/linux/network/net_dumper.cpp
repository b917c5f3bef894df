// SPDX-License-Identifier: MIT
#include "linux/network/net_dumper.h"

#include "hostctl/lib/exception.h"

namespace HostLinux {

void disableNetDumper(const Files&) {
  throw HostCtl::Lib::HostCtlException("DisableNetDumper", "netconsole", "cannot be done yet");
}

}  // namespace HostLinux
