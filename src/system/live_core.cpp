// SPDX-License-Identifier: MIT
#include "system/live_core.h"

#include <exception>
#include <system_error>
#include <thread>

#include "core/log.h"
#include "tarnctl/system/system_info_impl.h"
#include "tarnctl/util/exec.h"

namespace Kiva {

namespace {

// The program may end meanwhile: nothing here may use what is destroyed at exit.
void collectLiveCore() noexcept try {
  logInfo("%s", "Executing tarnbacktrace -c against mgmtd");
  const int status = TarnCtl::Util::TarnCtl_Exec(
      "/sbin/tarnbacktrace -w -n mgmtd -o mgmtd-restart% -d /var/log/", false, true, false);
  if (status == 0)
    TarnCtl::System::SystemInfoImpl().SetSystemAlert("Mgmtd core dump completed");
  else
    logError("tarnbacktrace failed, probably mgmtd was down");
} catch (const std::exception&) {
  // The core is a help for later; the operator waits for the agents.
}

}  // namespace

// The thread inherits the mask that leaves the handled signals to their own thread.
void startLiveCore() {
  try {
    std::thread(collectLiveCore).detach();
  } catch (const std::system_error& error) {
    logError("Failed to create live core generation thread: %s", error.code().message().c_str());
  }
}

}  // namespace Kiva
