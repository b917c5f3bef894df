// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace TarnCtl::Util {

/// Runs `line` through the host's shell, its descriptors on /dev/null, and waits for its end:
/// the exit status, 0 on success, or -1 when it could not be started or did not end by itself. The
/// flags ask for a result, for waiting and for detaching; the console always passes false, true,
/// false, and no other combination is accepted. May be called from several threads. Throws
/// HostCtlException when the host fails the call.
int TarnCtl_Exec(const std::string& line, bool capture, bool wait, bool detach);

}  // namespace TarnCtl::Util
