// SPDX-License-Identifier: MIT
#include "network/network_window.h"

#include "core/key_wait.h"
#include "core/log.h"
#include "network/adapters_dialog.h"
#include "network/apply_changes.h"
#include "network/dns_configuration_dialog.h"
#include "network/ip_configuration_dialog.h"
#include "network/ipv6_configuration_dialog.h"
#include "network/management_interface.h"
#include "network/network_panes.h"
#include "network/pending_changes.h"
#include "network/read_pending_network.h"
#include "network/suffixes_dialog.h"
#include "network/vlan_dialog.h"
#include "ui/footer.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

constexpr const char* kWayOut =
    "{align:right}{color:white}<Esc> {/color}{color:light-grey}Exit{/color}{/align}";

}  // namespace

const std::vector<NetworkWindow::Entry>& NetworkWindow::Entries() {
  using W = NetworkWindow;
  static const auto entry = [](TextId title, std::string (W::*text)(), void (W::*enter)()) {
    return Entry{.title = title, .footer = kChange, .text = text, .enter = enter};
  };
  static const std::vector<Entry> entries{
      entry(TextId::kNetworkAdapters, &W::AdaptersText, &W::EnterAdapters),
      entry(TextId::kVlanOptional, &W::VlanText, &W::EnterVlan),
      entry(TextId::kIPv4Configuration, &W::Ipv4Text, &W::EnterIpv4),
      entry(TextId::kIPv6Configuration, &W::Ipv6Text, &W::EnterIpv6),
      entry(TextId::kDnsConfiguration, &W::DnsText, &W::EnterDns),
      entry(TextId::kCustomDnsSuffixes, &W::SuffixesText, &W::EnterSuffixes),
  };
  return entries;
}

NetworkWindow::NetworkWindow(Frame& owner)
    : MenuWindow(owner, {.title = TextId::kConfigureManagementNetworkTitle,
                         .leftFooter = kSelect,
                         .wayOut = kWayOut}) {
  AddEntries(Entries());
}

int NetworkWindow::Foreground() {
  return Open() ? MenuWindow::Foreground() : 0;
}

bool NetworkWindow::Open() {
  auto network = readManagementNetwork();
  if (!network)
    return Refuse(TextId::kNetworkConfigurationError, TextId::kManagementNetworkOperationFailed);
  if (!network->interface)
    return Refuse(TextId::kEnableManagementNetworkError,
                  TextId::kManagementNetworkInterfaceNotFound);
  interface_ = std::move(network->interface);
  pending_ = std::move(network->pending);
  return true;
}

bool NetworkWindow::Refuse(TextId title, TextId text) {
  showMessage(*this, title, Text(text));
  return false;
}

ApplyChangesDialog::Answer NetworkWindow::Ask() {
  ApplyChangesDialog dialog(*this, isIpv6Toggled(pending_));
  runWindow(dialog);
  return dialog.GetAnswer();
}

bool NetworkWindow::MayClose() {
  using Answer = ApplyChangesDialog::Answer;
  if (!hasChanges(pending_)) return true;
  const Answer answer = Ask();
  if (answer != Answer::Yes) return answer == Answer::No;
  const char* const done = "Network settings changed.";
  try {
    ApplyChanges();
  } catch (const KivaTimeout&) {
    logInfo("%s", done);
    throw;
  }
  logInfo("%s", done);
  return true;
}

bool NetworkWindow::ApplyChanges() {
  return applyChanges(*this, *interface_, pending_, [this] { Repaint(); });
}

std::string NetworkWindow::AdaptersText() {
  return adaptersPane(pending_, readPnics().value_or(Pnics()), RightPane().Width());
}
std::string NetworkWindow::VlanText() {
  return vlanPane(pending_);
}
std::string NetworkWindow::Ipv4Text() {
  return ipv4Pane(pending_);
}
std::string NetworkWindow::Ipv6Text() {
  return ipv6Pane(pending_);
}
std::string NetworkWindow::DnsText() {
  return dnsPane(pending_);
}
std::string NetworkWindow::SuffixesText() {
  return suffixesPane(pending_);
}

template <typename Dialog, typename Choose>
void NetworkWindow::Run(Dialog&& dialog, const Choose& choose) {
  if (runWindow(dialog)) choose(dialog);
  RepaintRight();
}

// Without a switch there is nothing that adapters could be uplinks of.
void NetworkWindow::EnterAdapters() {
  const std::string switchName = getSwitchName(*interface_);
  if (switchName.empty()) return;
  Run(AdaptersDialog(*this, switchName, pending_.adapters),
      [this](const auto& dialog) { chooseAdapters(pending_, dialog.Selected()); });
}

void NetworkWindow::EnterVlan() {
  Run(VlanDialog(*this, pending_.vlanId),
      [this](const auto& dialog) { chooseVlanId(pending_, dialog.VlanId()); });
}

void NetworkWindow::EnterIpv4() {
  Run(IPConfigurationDialog(*this, pending_.ipConfig),
      [this](const auto& dialog) { chooseIpv4(pending_, dialog.Config()); });
}

void NetworkWindow::EnterIpv6() {
  Run(IPv6ConfigurationDialog(*this, pending_),
      [this](const auto& dialog) { chooseIpv6(pending_, dialog.Config(), dialog.Ipv6Enabled()); });
}

void NetworkWindow::EnterDns() {
  Run(DNSConfigurationDialog(*this, pending_), [this](const auto& dialog) {
    chooseDns(pending_, {.fromDhcp = dialog.DnsFromDhcp(),
                         .marked = dialog.WasTouched(),
                         .primary = dialog.PrimaryServer(),
                         .alternate = dialog.AlternateServer(),
                         .hostname = dialog.Hostname()});
  });
}

void NetworkWindow::EnterSuffixes() {
  Run(SuffixesDialog(*this, pending_.suffixes),
      [this](const auto& dialog) { chooseSuffixes(pending_, dialog.Suffixes()); });
}

}  // namespace Kiva
