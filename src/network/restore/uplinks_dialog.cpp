// SPDX-License-Identifier: MIT
#include "network/restore/uplinks_dialog.h"

#include <algorithm>

#include "network/restore/used_uplinks_dialog.h"

namespace Kiva {

using HostCtl::Network::PnicRecord;

UplinksDialog::UplinksDialog(Frame& owner, const Pnics& uplinks, std::vector<std::string> used)
    : AdapterChecksDialog(owner, TextId::kXdsUplinks, TextId::kSelectXdsUplinksToUse, uplinks,
                          uplinks.size()),
      used_(std::move(used)) {}

bool UplinksDialog::MayTake(const Pnics& chosen) {
  if (chosen.empty()) return Warn(TextId::kNoUplinksWereSelected);
  const bool anyUsed = std::any_of(chosen.begin(), chosen.end(), [&](const PnicRecord& pnic) {
    return std::find(used_.begin(), used_.end(), pnic.name) != used_.end();
  });
  return !anyUsed || Warn(TextId::kSelectedAdaptersAreUsed);
}

bool UplinksDialog::Warn(TextId text) {
  UsedUplinksDialog dialog(*this, text);
  return runWindow(dialog) != 0;
}

}  // namespace Kiva
