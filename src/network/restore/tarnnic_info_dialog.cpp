// SPDX-License-Identifier: MIT
#include "network/restore/tarnnic_info_dialog.h"

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/details.h"
#include "ui/footer.h"
#include "ui/markup_text.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::ConnectionPoint;
using HostCtl::Network::TarnNic;

namespace {

template <typename Value>
Value answered(Value (*ask)(const TarnNic&), const TarnNic& nic) try {
  return ask(nic);
} catch (const HostCtlException& e) {
  logError("%s", e.what());
  return {};
}

// "Management Network/vSwitch0"
std::string placeOf(const ConnectionPoint& at) {
  return plainText(at.portGroup + (at.portGroup.empty() ? "" : "/") + at.switchName);
}

}  // namespace

ConnectionPoint connectionOf(const TarnNic& nic) {
  return answered<ConnectionPoint>([](const TarnNic& one) { return one.GetConnectionPoint(); },
                                   nic);
}

TarnnicInfoDialog::TarnnicInfoDialog(Frame& owner, const std::unique_ptr<TarnNic>& nic)
    : InfoDialog(owner, 70, 16, 5), nic_(*nic) {}

void TarnnicInfoDialog::Fill() {
  const auto mac =
      answered<std::string>([](const TarnNic& nic) { return nic.GetMacAddress(); }, nic_);
  const auto config = answered<HostCtl::Network::IpConfig>(
      [](const TarnNic& nic) { return nic.GetIpConfig(); }, nic_);
  std::string addresses = detail("IPv4 Address:", config.GetIpv4Address().GetStringAddress());
  for (const auto& network : config.GetIpv6Networks())
    addresses += detail("IPv6 Address:", network.ToString());
  SetTitle("Tarn NIC Details");
  SetText("Device Name: " + plainText(nic_.GetInterfaceName()));
  SetFooter(kOkFooter);
  Details()->SetText(detail("MAC Address:", plainText(mac)) +
                     detail("Connected To:", placeOf(connectionOf(nic_))) + addresses);
}

}  // namespace Kiva
