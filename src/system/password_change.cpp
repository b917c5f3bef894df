// SPDX-License-Identifier: MIT
#include "system/password_change.h"

#include "core/log.h"
#include "hostctl/auth/user_accounts.h"
#include "hostctl/lib/exception.h"
#include "hostctl/system/feature_list.h"
#include "system/audit_events.h"
#include "system/host_tools.h"

namespace Kiva {

using HostCtl::System::Feature;
using HostCtl::System::FeatureList;

bool storeUserAccounts() {
  try {
    if (FeatureList::IsEnabled(Feature::UserAccountsInConfigStore))
      HostCtl::Authentication::StoreUserAccountsToCs();
    return true;
  } catch (const HostCtl::Lib::HostCtlException& exception) {
    logWarning(
        "Error while storing user account information to persistent storage. The new information "
        "may not be available after reboot. Error: %s",
        exception.what());
    return false;
  }
}

void completePasswordChange(const std::string& user) {
  RunCommand({.path = "/sbin/backup.sh", .arguments = {"backup.sh", "0"}});
  HmxCmdRefresh();
  logInfo("Login password for user %s has changed", user.c_str());
  PostAuditEvent("evb.user.kiva.login.passwd.changed",
                 "Login password for user " + user + " changed");
}

}  // namespace Kiva
