// SPDX-License-Identifier: MIT
// The PAM module of the console's own logins. Its auth line stands before the card's: it asks the
// one hidden question of a login for all modules after it, and succeeds when the answer may be a
// PIN. A card counts every wrong PIN and locks itself after a few, so it must never be tried with a
// password. Its account line admits those who may administer the host.
#include <security/pam_ext.h>
#include <security/pam_modules.h>

#include <exception>
#include <string_view>

#include "linux/tools/administrators.h"

namespace {

bool mayBePin(std::string_view secret) {
  constexpr std::size_t kShortest = 4;
  constexpr std::size_t kLongest = 12;
  return secret.size() >= kShortest && secret.size() <= kLongest &&
         secret.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] int pam_sm_authenticate(pam_handle_t* handle, int, int,
                                                       const char**) {
  const char* secret = nullptr;
  if (pam_get_authtok(handle, PAM_AUTHTOK, &secret, nullptr) != PAM_SUCCESS || secret == nullptr)
    return PAM_IGNORE;
  return mayBePin(secret) ? PAM_SUCCESS : PAM_IGNORE;
}

[[gnu::visibility("default")]] int pam_sm_setcred(pam_handle_t*, int, int, const char**) {
  return PAM_IGNORE;
}

[[gnu::visibility("default")]] int pam_sm_acct_mgmt(pam_handle_t* handle, int, int,
                                                    const char**) try {
  const char* user = nullptr;
  const int status = pam_get_user(handle, &user, nullptr);
  if (status != PAM_SUCCESS) return status;
  return HostLinux::mayAdminister(user) ? PAM_SUCCESS : PAM_PERM_DENIED;
} catch (const std::exception&) {
  return PAM_SYSTEM_ERR;
}

}  // extern "C"
