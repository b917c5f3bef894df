// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

namespace Bench {

/// Voluntary context switches of all threads of a process since its start.
long switchesOf(pid_t pid);
int threadsOf(pid_t pid);
/// Its share of the machine's memory (PSS), in MiB.
double memoryOf(pid_t pid);

}  // namespace Bench
