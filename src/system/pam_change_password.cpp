// SPDX-License-Identifier: MIT
#include "system/pam_change_password.h"

#include "system/pam_transaction.h"

namespace Kiva {

namespace {

constexpr PamStep kSteps[] = {{.function = pam_authenticate, .passesExpired = true},
                              {.function = pam_acct_mgmt, .passesExpired = true},
                              {.function = pam_chauthtok},
                              {.function = pam_setcred, .flags = PAM_REFRESH_CRED}};

}  // namespace

bool PamChangePassword(const std::string& user, const Secret& oldPassword,
                       const Secret& newPassword) {
  HiddenAnswers answers{{oldPassword.CString(), newPassword.CString(), newPassword.CString()}};
  return runPamTransaction(user, {answerHiddenPrompts, &answers}, kSteps) == PAM_SUCCESS;
}

}  // namespace Kiva
