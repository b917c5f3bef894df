// SPDX-License-Identifier: MIT
// The PAM module of a sample host: logins, account checks and password changes over the accounts of
// the host.json that its one argument names. It needs no privilege but that file.
#include <security/pam_ext.h>
#include <security/pam_modules.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <utility>

#include "sample/changes.h"
#include "sample/store.h"

namespace {

using HostSample::Account;
using HostSample::Store;

constexpr const char* kAuthenticatedUser = "pam_kiva_sample_user";

/// What was typed at a hidden prompt; wiped at the end of its life.
class Answer {
 public:
  Answer(pam_handle_t* handle, const char* prompt) {
    status_ = pam_prompt(handle, PAM_PROMPT_ECHO_OFF, &text_, "%s", prompt);
    if (status_ == PAM_SUCCESS && text_ == nullptr) status_ = PAM_CONV_ERR;
  }
  Answer(const Answer&) = delete;
  Answer& operator=(const Answer&) = delete;
  ~Answer() {
    if (text_ == nullptr) return;
    explicit_bzero(text_, std::strlen(text_));
    std::free(text_);
  }
  int Status() const { return status_; }
  const char* Text() const { return text_; }

 private:
  char* text_ = nullptr;
  int status_;
};

/// One call of PAM over the accounts as they are then.
struct Request {
  pam_handle_t* handle;
  int flags;
  Store& store;
  const HostSample::HostState& state;
  std::string user;

  const Account* FindAccount() const { return findAccount(state, user); }
};

/// Runs `answer`; nothing that goes wrong on the way may reach libpam as an exception.
int serve(pam_handle_t* handle, int flags, int argc, const char** argv,
          const std::function<int(const Request&)>& answer) try {
  const char* user = nullptr;
  const int status = pam_get_user(handle, &user, nullptr);
  if (status != PAM_SUCCESS) return status;
  if (argc != 1) return PAM_SERVICE_ERR;
  Store store{argv[0]};
  return answer({handle, flags, store, store.LastGoodState(), user});
} catch (const std::exception&) {
  return PAM_SYSTEM_ERR;
}

int remember(const Request& request, const char* secret) {
  const int status = pam_set_item(request.handle, PAM_AUTHTOK, secret);
  if (status != PAM_SUCCESS) return status;
  return pam_set_data(request.handle, kAuthenticatedUser, strdup(request.user.c_str()),
                      [](pam_handle_t*, void* data, int) { std::free(data); });
}

int authenticate(const Request& request) {
  const Answer secret(request.handle, "Password: ");
  if (secret.Status() != PAM_SUCCESS) return secret.Status();
  const bool empty = *secret.Text() == '\0';
  if (empty && (request.flags & PAM_DISALLOW_NULL_AUTHTOK) != 0) return PAM_AUTH_ERR;
  const Account* account = request.FindAccount();
  if (account == nullptr || !acceptsSecret(request.state, *account, secret.Text()))
    return PAM_AUTH_ERR;
  return remember(request, secret.Text());
}

int checkAccount(const Request& request) {
  const Account* account = request.FindAccount();
  if (account == nullptr) return PAM_USER_UNKNOWN;
  if (!account->permission) return PAM_PERM_DENIED;
  return account->expired ? PAM_NEW_AUTHTOK_REQD : PAM_SUCCESS;
}

/// libpam forgets the secret after the login, so the login that this transaction has been through
/// counts as well as a secret that another module left.
bool knowsOldSecret(const Request& request, const Account& account) {
  const void* user = nullptr;
  if (pam_get_data(request.handle, kAuthenticatedUser, &user) == PAM_SUCCESS)
    return request.user == static_cast<const char*>(user);
  const void* secret = nullptr;
  return pam_get_item(request.handle, PAM_AUTHTOK, &secret) == PAM_SUCCESS && secret != nullptr &&
         acceptsSecret(request.state, account, static_cast<const char*>(secret));
}

int replaceSecret(const Request& request) {
  const Answer secret(request.handle, "New password: ");
  if (secret.Status() != PAM_SUCCESS) return secret.Status();
  const Answer again(request.handle, "Retype new password: ");
  if (again.Status() != PAM_SUCCESS) return again.Status();
  const auto least = static_cast<std::size_t>(request.state.minimumPasswordLength);
  if (std::strcmp(secret.Text(), again.Text()) != 0 || std::strlen(secret.Text()) < least)
    return PAM_AUTHTOK_ERR;
  changePassword(request.store, request.user, secret.Text());
  return pam_set_item(request.handle, PAM_AUTHTOK, secret.Text());
}

int changeSecret(const Request& request) {
  const Account* account = request.FindAccount();
  if (account == nullptr) return PAM_USER_UNKNOWN;
  if ((request.flags & PAM_CHANGE_EXPIRED_AUTHTOK) != 0 && !account->expired) return PAM_SUCCESS;
  if (!knowsOldSecret(request, *account)) return PAM_AUTHTOK_RECOVERY_ERR;
  return (request.flags & PAM_PRELIM_CHECK) != 0 ? PAM_SUCCESS : replaceSecret(request);
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] int pam_sm_authenticate(pam_handle_t* handle, int flags, int argc,
                                                       const char** argv) {
  return serve(handle, flags, argc, argv, authenticate);
}

[[gnu::visibility("default")]] int pam_sm_setcred(pam_handle_t*, int, int, const char**) {
  return PAM_SUCCESS;
}

[[gnu::visibility("default")]] int pam_sm_acct_mgmt(pam_handle_t* handle, int flags, int argc,
                                                    const char** argv) {
  return serve(handle, flags, argc, argv, checkAccount);
}

[[gnu::visibility("default")]] int pam_sm_chauthtok(pam_handle_t* handle, int flags, int argc,
                                                    const char** argv) {
  return serve(handle, flags, argc, argv, changeSecret);
}

}  // extern "C"
