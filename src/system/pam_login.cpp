// SPDX-License-Identifier: MIT
#include "system/pam_login.h"

#include "system/pam_transaction.h"

namespace Kiva {

namespace {

/// A login answers one question and reads no messages.
int converse(int count, const pam_message** messages, pam_response** responses, void* data) {
  if (count != 1 || !responses) return PAM_CONV_ERR;
  return answerHiddenPrompts(count, messages, responses, data);
}

constexpr PamStep kSteps[] = {{pam_authenticate}, {pam_acct_mgmt}};

}  // namespace

int PamLogin(const std::string& user, const Secret& secret) {
  HiddenAnswers answers{{secret.CString()}};
  return runPamTransaction(user, {converse, &answers}, kSteps);
}

}  // namespace Kiva
