// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// Notes this process in the pid file, unless a process that still lives is noted there; that is
/// logged, and both go on.
void writePidFile();

}  // namespace Kiva
