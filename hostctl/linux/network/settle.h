// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "linux/network/own_files.h"
#include "linux/network_tables.h"

namespace HostLinux {

// How the changes of an interface's configuration come into force and are seen to be.

/// Whether the kernel's tables are as they shall be for the link.
using IsInForce = std::function<bool(const NetworkTables&, const LinkRow&)>;

/// Waits until `isInForce`, for ten seconds at most; then HostCtlException of `operation` says that
/// `what` did not come. On a link that has no carrier after three of them nothing comes into force
/// before its cable is plugged in; nobody waits for that.
void waitInForce(const std::string& operation, const std::string& interface,
                 const std::string& what, const IsInForce& isInForce);

/// Has networkd reload and then checks what came of it, but not again when it has refused and the
/// old files are taken over.
OwnFiles::TakeOver reloadAndCheck(const std::string& operation, const std::string& interface,
                                  std::function<void()> check);

}  // namespace HostLinux
