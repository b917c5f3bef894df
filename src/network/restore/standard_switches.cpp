// SPDX-License-Identifier: MIT
#include "network/restore/standard_switches.h"

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/details.h"
#include "tarnctl/network/virtual_switch_info_impl.h"
#include "ui/footer.h"
#include "ui/markup_text.h"
#include "ui/utf8.h"

namespace Kiva {

std::vector<StandardSwitch> readStandardSwitches() try {
  std::vector<StandardSwitch> switches;
  for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches()) {
    StandardSwitch& read = switches.emplace_back();
    read.name = one->GetName();
    read.uplinks = one->GetUplinks();
    for (const auto& group : one->GetPortGroups()) read.portGroups.push_back(group->GetName());
  }
  return switches;
} catch (const HostCtl::Lib::HostCtlException& e) {
  logError("%s", e.what());
  return {};
}

std::string portGroupText(const std::string& portGroup, const std::string& switchName,
                          int columns) {
  const std::string end = (portGroup.empty() ? "" : "/") + plainText(repairedUtf8(switchName));
  return cut(plainText(repairedUtf8(portGroup)), columns - columnCount(end)) + end;
}

namespace {

constexpr int kNameColumns = 46;

}  // namespace

SwitchInfoDialog::SwitchInfoDialog(Frame& owner, const StandardSwitch& shown)
    : InfoDialog(owner, 70, 16, 5), shown_(shown) {}

void SwitchInfoDialog::Fill() {
  const auto listOf = [&](const std::vector<std::string>& names) {
    return names.empty() ? Text(TextId::kNone) : joined(names);
  };
  SetTitle(Text(TextId::kStandardSwitchDetails));
  SetText(Text(TextId::kSwitchNameLabel) + cut(plainText(repairedUtf8(shown_.name)), kNameColumns));
  SetFooter(kOkFooter);
  Details()->SetText(detail("Uplinks:", listOf(shown_.uplinks)) +
                     detail("Port Groups:", listOf(shown_.portGroups)));
}

}  // namespace Kiva
