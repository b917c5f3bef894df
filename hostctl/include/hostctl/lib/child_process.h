// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/platform.h"

namespace HostCtl::Lib {

/// The three descriptors that a child gets; they stay the caller's.
struct ChildDescriptors {
  const Descriptor& input;
  const Descriptor& output;
  const Descriptor& errors;
};

/// Starts `program` as it stands in a session of its own, with the default signal mask and
/// dispositions, no descriptor but its three and the environment PYTHONHOME=/ alone. Returns an
/// errno, 0 once the child runs; the caller waits for it. May be called from several threads.
int startChild(Program program, const ChildDescriptors& descriptors, pid_t& child);

/// The child's status word when it has ended, all ones when waiting for it failed.
int waitForChild(pid_t child);

}  // namespace HostCtl::Lib
