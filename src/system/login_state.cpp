// SPDX-License-Identifier: MIT
#include "system/login_state.h"

#include <filesystem>

#include "core/session.h"
#include "core/smart_card.h"
#include "hostctl/lib/platform.h"

namespace Kiva {

void SetLoggedInUser(const std::string& user) {
  session().user = user;
  session().bySmartCard = isSmartCardPresent(user);
}

bool HasSmartCardUserId() {
  return !session().smartCardUserId.empty();
}

bool IsConsoleLoginShown() {
  std::error_code ignored;
  return std::filesystem::exists(
      HostCtl::Lib::platform().HostPath("/var/run/corvo/show-kiva-login"), ignored);
}

}  // namespace Kiva
