// SPDX-License-Identifier: MIT
#include "system/pam_transaction.h"

#include <cstdlib>
#include <cstring>

#include "hostctl/lib/platform.h"

namespace Kiva {

namespace {

constexpr const char* kService = "kiva";

char* nextAnswer(HiddenAnswers& answers) {
  return answers.given < answers.texts.size() ? strdup(answers.texts[answers.given++]) : nullptr;
}

int start(const std::string& user, const pam_conv& conversation, pam_handle_t*& handle) {
  const auto directory = HostCtl::Lib::platform().PamServiceDirectory();
  return directory
             ? pam_start_confdir(kService, user.c_str(), &conversation, directory->c_str(), &handle)
             : pam_start(kService, user.c_str(), &conversation, &handle);
}

}  // namespace

int answerHiddenPrompts(int count, const pam_message** messages, pam_response** responses,
                        void* data) {
  if (count < 1 || !messages || !data) return PAM_CONV_ERR;
  // Modules that only tell something may have no place for an answer.
  if (!responses) return PAM_SUCCESS;
  const auto size = static_cast<std::size_t>(count);
  auto* given = static_cast<pam_response*>(std::calloc(size, sizeof(pam_response)));
  if (!given) return PAM_CONV_ERR;
  for (std::size_t i = 0; i < size; ++i)
    if (messages[i] && messages[i]->msg_style == PAM_PROMPT_ECHO_OFF)
      given[i].resp = nextAnswer(*static_cast<HiddenAnswers*>(data));
  *responses = given;
  return PAM_SUCCESS;
}

int runPamTransaction(const std::string& user, const pam_conv& conversation,
                      std::span<const PamStep> steps) {
  pam_handle_t* handle = nullptr;
  int status = start(user, conversation, handle);
  if (status != PAM_SUCCESS) return status;
  for (const PamStep& step : steps) {
    status = step.function(handle, step.flags);
    const bool goesOn =
        status == PAM_SUCCESS || (step.passesExpired && status == PAM_NEW_AUTHTOK_REQD);
    if (!goesOn) break;
  }
  pam_end(handle, status);
  return status;
}

}  // namespace Kiva
