// SPDX-License-Identifier: MIT
#include "system/authentication.h"

#include <security/pam_appl.h>
#include <syslog.h>

#include "core/log.h"
#include "core/session.h"
#include "system/audit_events.h"
#include "system/login_state.h"
#include "system/pam_login.h"

namespace Kiva {

namespace {

/// How a refusal is told to the log, the audit trail and the event library.
struct Refusal {
  Authentication outcome;
  std::string line;
  const char* reason;
  std::string event;
};

Refusal refusalFor(int status, const std::string& user) {
  const std::string denied = "Access denied for user " + user;
  const std::string failed = "Authentication of user " + user + " failed";
  switch (status) {
    case PAM_PERM_DENIED:
      return {Authentication::NoPermission, denied, "No permission", denied};
    case PAM_NEW_AUTHTOK_REQD:
      return {Authentication::PasswordExpired, "Password has expired for user " + user,
              "Password expired", denied};
    default:
      return {Authentication::Failed, failed, "Invalid Login", failed};
  }
}

Authentication accept(const std::string& user, const Secret& secret) {
  SetLoggedInUser(user);
  session().emptyPassword = secret.IsEmpty();
  logLine(LOG_AUTH | LOG_EMERG, "Authentication of user %s succeeded", user.c_str());
  logInfo("User %s logged in", user.c_str());
  writeAuditRecord(kLoginConnect, user, AuditOutcome::Success);
  return Authentication::Accepted;
}

}  // namespace

Authentication authenticate(const std::string& user, const Secret& secret) {
  const int status = PamLogin(user, secret);
  if (status == PAM_SUCCESS) return accept(user, secret);
  if (status == PAM_NEW_AUTHTOK_REQD) SetLoggedInUser(user);
  const Refusal refusal = refusalFor(status, user);
  logLine(LOG_AUTH | LOG_ERR, "%s", refusal.line.c_str());
  writeAuditRecord(kLoginConnect, user, AuditOutcome::Failure, {{"reason", refusal.reason}});
  PostAuditEvent("evb.user.kiva.login.failed", refusal.event);
  return refusal.outcome;
}

}  // namespace Kiva
