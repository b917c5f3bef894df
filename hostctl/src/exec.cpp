// SPDX-License-Identifier: MIT
#include "tarnctl/util/exec.h"

#include <fcntl.h>
#include <sys/wait.h>

#include <cassert>

#include "hostctl/lib/child_process.h"
#include "src/enter.h"

namespace TarnCtl::Util {

using namespace HostCtl::Lib;

int TarnCtl_Exec(const std::string& line, [[maybe_unused]] bool capture, [[maybe_unused]] bool wait,
                 [[maybe_unused]] bool detach) {
  assert(!capture && wait && !detach);
  enter("TarnCtl_Exec");
  const Descriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
  pid_t child = -1;
  const Program shell = platform().ChildProgram({"/bin/sh", {"sh", "-c", line}});
  if (!nothing || startChild(shell, {nothing, nothing, nothing}, child) != 0) return -1;
  const int status = waitForChild(child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace TarnCtl::Util
