// SPDX-License-Identifier: MIT
#include "network/adapters_dialog.h"

#include <algorithm>

#include "network/adapter_users.h"
#include "network/used_adapters_dialog.h"

namespace Kiva {

AdaptersDialog::AdaptersDialog(Frame& owner, std::string switchName,
                               const std::vector<std::string>& selected)
    : AdapterChecksDialog(owner, TextId::kNetworkAdaptersTitle, TextId::kSelectAdapters,
                          ordered(readPnics().value_or(Pnics()), selected), selected.size()),
      switchName_(std::move(switchName)) {}

bool AdaptersDialog::MayTake(const Pnics& chosen) {
  if (!IsUsedElsewhere(chosen)) return true;
  UsedAdaptersDialog dialog(*this);
  return runWindow(dialog) != 0;
}

bool AdaptersDialog::IsUsedElsewhere(const Pnics& pnics) const {
  const auto users = findAdapterUsers(pnics).value_or(std::vector<AdapterUser>());
  return std::any_of(users.begin(), users.end(),
                     [&](const AdapterUser& user) { return user.switchName != switchName_; });
}

}  // namespace Kiva
