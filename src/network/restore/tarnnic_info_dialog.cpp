// SPDX-License-Identifier: MIT
#include "network/restore/tarnnic_info_dialog.h"

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "network/details.h"
#include "network/restore/standard_switches.h"
#include "ui/footer.h"
#include "ui/markup_text.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::ConnectionPoint;
using HostCtl::Network::TarnNic;

namespace {

template <typename Value>
Value answered(TarnNic& nic, Value (TarnNic::*ask)() const) try {
  if (nic.IsStale()) nic.Refresh();
  return (nic.*ask)();
} catch (const HostCtlException& e) {
  logError("%s", e.what());
  return {};
}

constexpr int kValueColumns = 46;

}  // namespace

ConnectionPoint connectionOf(TarnNic& nic) {
  return answered(nic, &TarnNic::GetConnectionPoint);
}

TarnnicInfoDialog::TarnnicInfoDialog(Frame& owner, const std::unique_ptr<TarnNic>& nic)
    : InfoDialog(owner, 70, 16, 5), nic_(*nic) {}

void TarnnicInfoDialog::Fill() {
  const auto mac = answered(nic_, &TarnNic::GetMacAddress);
  const auto config = answered(nic_, &TarnNic::GetIpConfig);
  const ConnectionPoint at = connectionOf(nic_);
  const auto ipv4 = config.GetIpv4Address();
  std::string addresses = detail("IPv4 Address:", ipv4.IsEmpty() ? "" : ipv4.GetStringAddress());
  for (const auto& network : config.GetIpv6Networks())
    addresses += detail("IPv6 Address:", network.ToString());
  SetTitle("Tarn NIC Details");
  SetText("Device Name: " + plainText(nic_.GetInterfaceName()));
  SetFooter(kOkFooter);
  Details()->SetText(
      detail("MAC Address:", plainText(mac)) +
      detail("Connected To:", portGroupText(at.portGroup, at.switchName, kValueColumns)) +
      addresses);
}

}  // namespace Kiva
