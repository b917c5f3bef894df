// SPDX-License-Identifier: MIT
#include "network/adapter_info_dialog.h"

#include <algorithm>

#include "network/adapter_list.h"
#include "network/adapter_users.h"
#include "network/details.h"
#include "ui/footer.h"
#include "ui/markup_text.h"

namespace Kiva {

using HostCtl::Network::PnicRecord;

namespace {

// "vSwitch1 (Storage, Backup)"
std::string userText(const AdapterUser& user) {
  const std::string groups = joined(user.portGroups);
  return plainText(user.switchName) + (groups.empty() ? "" : " (" + groups + ")");
}

}  // namespace

AdapterInfoDialog::AdapterInfoDialog(Frame& owner, const PnicRecord& pnic)
    : InfoDialog(owner, 70, 16, 5), pnic_(pnic) {
  Update();
}

void AdapterInfoDialog::Update() {
  const auto all = readPnics();
  if (!all) return;
  const auto found = std::find_if(all->begin(), all->end(),
                                  [&](const PnicRecord& one) { return one.name == pnic_.name; });
  gone_ = found == all->end();
  if (gone_)
    pnic_.switchName.clear();
  else
    pnic_ = *found;
}

void AdapterInfoDialog::Fill() {
  SetTitle("Adapter Details");
  SetText("Device Name: " + plainText(pnic_.name));
  SetFooter(kOkFooter);
  Details()->SetText(detail("Hardware Label:", hardwareLabel(pnic_)) +
                     detail("MAC Address:", plainText(pnic_.macAddress)) +
                     detail("Connection Status:", gone_ ? kDisconnected : linkStatus(pnic_)) +
                     detail("Used By:", UsersText()));
}

std::string AdapterInfoDialog::UsersText() const {
  const auto users = findAdapterUsers({pnic_});
  if (!users) return "";
  std::vector<std::string> texts;
  for (const AdapterUser& user : *users) texts.push_back(userText(user));
  return texts.empty() ? Text(TextId::kNone) : joined(texts);
}

}  // namespace Kiva
