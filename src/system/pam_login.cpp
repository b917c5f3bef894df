// SPDX-License-Identifier: MIT
#include "system/pam_login.h"

#include <security/pam_appl.h>

#include <cstdlib>
#include <cstring>
#include <utility>

#include "hostctl/lib/platform.h"

namespace Kiva {

namespace {

constexpr const char* kService = "kiva";

struct Answer {
  const char* secret;
  bool given = false;
};

/// The stack frees the responses with free().
int converse(int count, const pam_message** messages, pam_response** responses, void* data) {
  auto* answer = static_cast<Answer*>(data);
  if (count != 1 || !messages || !messages[0] || !responses || !answer) return PAM_CONV_ERR;
  auto* response = static_cast<pam_response*>(std::calloc(1, sizeof(pam_response)));
  if (!response) return PAM_CONV_ERR;
  if (messages[0]->msg_style == PAM_PROMPT_ECHO_OFF && !std::exchange(answer->given, true))
    response->resp = strdup(answer->secret);
  *responses = response;
  return PAM_SUCCESS;
}

int start(const std::string& user, const pam_conv& conversation, pam_handle_t*& handle) {
  const auto directory = HostCtl::Lib::platform().PamServiceDirectory();
  return directory
             ? pam_start_confdir(kService, user.c_str(), &conversation, directory->c_str(), &handle)
             : pam_start(kService, user.c_str(), &conversation, &handle);
}

}  // namespace

int PamLogin(const std::string& user, const Secret& secret) {
  Answer answer{secret.CString()};
  const pam_conv conversation{converse, &answer};
  pam_handle_t* handle = nullptr;
  int status = start(user, conversation, handle);
  if (status != PAM_SUCCESS) return status;
  status = pam_authenticate(handle, PAM_SILENT);
  if (status == PAM_SUCCESS) status = pam_acct_mgmt(handle, PAM_SILENT);
  pam_end(handle, status);
  return status;
}

}  // namespace Kiva
