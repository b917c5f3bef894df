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
/// `what` did not come. An interface that networkd gave up is configured anew meanwhile, because it
/// does not try again by itself, not even at a reload; where that fails it is logged. On a link
/// that has no carrier after three seconds nothing comes into force before its cable is plugged in;
/// nobody waits for that. `files` outlives the call.
void waitInForce(const Files& files, const std::string& operation, const std::string& interface,
                 const std::string& what, const IsInForce& isInForce);

/// Has networkd reload and waits until it has begun to configure the interface anew, which takes
/// away what there was; a second at most, because it leaves an interface alone whose files say what
/// they said.
void reloadFor(const Files& files, const std::string& operation, const std::string& interface);

/// Waits until networkd has done all that it can, two seconds at most: it also takes links up, and
/// calls an interface that waits for a lease or a router unfinished.
void letNetworkdFinish(const Files& files, const std::string& interface);

/// Waits until networkd knows that the interface is down, two seconds at most.
void letNetworkdSeeItDown(const Files& files, const std::string& interface);

/// Does what reloadFor does and checks what came of it: the first time only, so not when the old
/// files are taken over again. `files` outlives it.
OwnFiles::TakeOver reloadAndCheck(const Files& files, const std::string& operation,
                                  const std::string& interface, std::function<void()> check);

}  // namespace HostLinux
