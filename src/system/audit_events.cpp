// SPDX-License-Identifier: MIT
#include "system/audit_events.h"

#include "core/log.h"
#include "hostctl/lib/platform.h"

namespace Kiva {

using HostCtl::Lib::platform;

int InitEventLibrary() {
  logInfo("%s", "Initializing evbuser library");
  const int status = platform().EventInit();
  if (status != 0)
    logError("Unable to initialize evbuser library from KIVA. Error code: %d", status);
  return status;
}

void PostAuditEvent(const std::string& id, const std::string& message) {
  if (InitEventLibrary() != 0) return;
  platform().EventAdd("@&!*@*@(" + id + ")" + message);
  platform().EventClose();
}

void announceOperation(const std::string& id, const std::string& message) {
  logInfo("%s", message.c_str());
  PostAuditEvent(id, message);
}

void writeAuditRecord(const std::string& event, const std::string& user, AuditOutcome outcome,
                      const AuditPairs& pairs) {
  platform().Audit(
      {.event = event, .user = user, .success = outcome == AuditOutcome::Success, .pairs = pairs});
}

}  // namespace Kiva
