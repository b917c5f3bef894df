// SPDX-License-Identifier: MIT
#include "core/smart_card.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "core/log.h"
#include "core/session.h"
#include "hostctl/lib/exception.h"
#include "tarnctl/auth/smart_card_info_impl.h"

namespace Kiva {

namespace {

std::vector<std::string> presentUsers() {
  std::vector<std::string> users;
  try {
    TarnCtl::Authentication::SmartCardInfoImpl cards;
    for (const auto& slot : cards.GetAllSlots()) {
      const auto token = cards.GetToken(slot);
      if (token && !token->userId.empty()) users.push_back(token->userId);
    }
  } catch (const HostCtl::Lib::HostCtlException&) {
    logError("Error trying to lookup smart card tokens.");
    return {};
  }
  return users;
}

}  // namespace

std::optional<std::string> presentSmartCardUser() {
  const auto users = presentUsers();
  if (users.empty()) return std::nullopt;
  return users.front();
}

bool isSmartCardPresent(const std::string& userId) {
  const auto users = presentUsers();
  return std::find(users.begin(), users.end(), userId) != users.end();
}

void checkSmartCard() {
  Session& now = session();
  if (!now.active) {
    now.smartCardUserId = presentSmartCardUser().value_or("");
    if (!now.smartCardUserId.empty())
      logInfo("Found smart card with user id '%s'", now.smartCardUserId.c_str());
  } else if (now.bySmartCard && !isSmartCardPresent(now.user)) {
    logInfo("Logging out user id '%s'", now.user.c_str());
    std::exit(0);
  }
}

}  // namespace Kiva
