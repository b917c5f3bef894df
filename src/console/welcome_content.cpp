// SPDX-License-Identifier: MIT
#include "console/welcome_content.h"

#include <algorithm>

#include "console/fact_format.h"
#include "hostctl/system/records.h"
#include "network/management_interface.h"
#include "tarnctl/network/network_info_impl.h"
#include "tarnctl/system/system_info_impl.h"
#include "ui/markup_text.h"
#include "ui/string_factory.h"

namespace Kiva {

namespace {

using HostCtl::Network::AddressType;
using HostCtl::Network::IpConfig;
using HostCtl::Network::Ipv6Network;

constexpr std::size_t kMostIpv6Lines = 5;
constexpr const char* kNoAdapter = "No compatible network adapter found.";
constexpr const char* kNoAdapterHelp =
    " Please consult the product's Hardware Compatibility Guide (HCG) for a list of supported "
    "adapters.";

bool waitsForLease(const IpConfig& config) {
  return config.GetIpv4UseDhcp() && config.GetIpv4Address().IsEmpty();
}

TextId ipv4Kind(const IpConfig& config) {
  if (!config.GetIpv4UseDhcp()) return TextId::kStatic;
  return waitsForLease(config) ? TextId::kWaitingForDhcp : TextId::kDhcp;
}

std::string inParentheses(TextId kind) {
  return std::string("(") + catalogueText(kind) + ")";
}

std::string ipv6Kind(AddressType type) {
  switch (type) {
    case AddressType::Static:
      return inParentheses(TextId::kStatic);
    case AddressType::Dhcp:
      return inParentheses(TextId::kDhcp);
    case AddressType::Autoconf:
      return inParentheses(TextId::kAutoconf);
    case AddressType::Other:
      break;
  }
  return "";
}

std::string hardwareLine() {
  TarnCtl::System::HardwareInfoImpl hardware;
  return hardwareText(hardware.GetVendorName(), hardware.GetProductName());
}

std::string processorLines() {
  TarnCtl::System::ProcessorInfoImpl processors;
  TarnCtl::System::MemoryInfoImpl memory;
  return processorText(processors.GetModelName(), processors.GetNumCpuPackages()) + "\n" +
         welcomeMemoryText(memory.GetTotalPages() * memory.GetPageSize());
}

std::string warningText(const std::optional<IpConfig>& config) {
  TarnCtl::System::SystemInfoImpl system;
  if (system.GetBootOption() == HostCtl::System::kBootAudit)
    return catalogueText(TextId::kWarningAuditMode);
  if (config && waitsForLease(*config)) return catalogueText(TextId::kWarningDhcpLookupFailed);
  return "";
}

std::string joined(const std::string& left, const std::string& right) {
  return left.empty() || right.empty() ? left + right : left + " " + right;
}

}  // namespace

std::string hardwareText(const std::string& vendor, const std::string& product) {
  return plainText(joined(squeezeBlanks(vendor), squeezeBlanks(product)));
}

std::string processorText(const std::string& model, int packages) {
  const std::string name = plainText(squeezeBlanks(model));
  return packages >= 2 && !name.empty() ? std::to_string(packages) + " x " + name : name;
}

std::string ipv6Lines(const std::vector<Ipv6Network>& networks) {
  const bool all = networks.size() <= kMostIpv6Lines;
  std::vector<std::string> lines;
  for (const Ipv6Network& network : networks) {
    if (!all && lines.size() == kMostIpv6Lines - 1) break;
    lines.push_back("https://[" + network.address.GetStringAddress() + "]/ " +
                    ipv6Kind(network.type) + "\n");
  }
  std::sort(lines.begin(), lines.end());
  std::string text;
  for (const std::string& line : lines) text += line;
  return all ? text : text + "...";
}

std::string managementText(const std::string& hostname, const std::optional<IpConfig>& config,
                           bool ipv6Enabled) {
  std::string text = catalogueText(TextId::kToManageThisHostGoTo);
  if (!hostname.empty() && hostname != "localhost")
    text += "\nhttps://" + plainText(hostname) + "/ ";
  if (!config) return text;
  if (!config->GetIpv4UseNone())
    text += "\nhttps://" + config->GetIpv4Address().GetStringAddress() + "/ " +
            inParentheses(ipv4Kind(*config));
  if (ipv6Enabled) text += "\n" + ipv6Lines(config->GetIpv6Networks());
  return text;
}

void AdapterAlert::Update(bool adapters) {
  if (!std::exchange(raised_, !adapters) && !adapters)
    TarnCtl::System::SystemInfoImpl().SetSystemAlert(kNoAdapter);
}

WelcomeContent readWelcomeContent(HostCtl::Network::DnsConfig& dns, AdapterAlert& alert) {
  WelcomeContent content;
  TarnCtl::Network::NetworkInfoImpl network;
  const bool adapters = !network.GetPnics().empty();
  alert.Update(adapters);
  content.banner = catalogueText(TextId::kProductBanner);
  content.hardware = hardwareLine();
  content.processors = processorLines();

  const auto nic = findManagementInterface();
  const auto config = nic ? std::optional(nic->GetIpConfig()) : std::nullopt;
  dns.Refresh();
  content.management = adapters
                           ? managementText(dns.GetHostname(), config, network.IsTarnIpv6Enabled())
                           : std::string(kNoAdapter) + kNoAdapterHelp;
  content.warning = warningText(config);
  return content;
}

}  // namespace Kiva
