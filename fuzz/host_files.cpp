// SPDX-License-Identifier: MIT
// Any bytes in the files of a host that the console reads; the first byte says in which.
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>

#include "console/support_pages.h"
#include "hostctl/network/address.h"
#include "hostctl/network/hosts_file.h"
#include "linux/network/dhcp_release.h"
#include "linux/network/host_name.h"
#include "linux/network/ip_file.h"
#include "linux/network/ovsdb.h"
#include "linux/network_file.h"
#include "linux/networkd_describe.h"
#include "linux/os_version.h"
#include "linux/processors.h"
#include "linux/resolver.h"
#include "linux/settings.h"
#include "linux/text.h"

namespace {

using Reader = void (*)(std::string_view text);

constexpr Reader kReaders[] = {
    [](std::string_view text) { HostLinux::asksForDhcpv4(text); },
    [](std::string_view text) {
      HostLinux::IniFile file(text);
      setIpConfig(file, "tarn0", ipConfigIn(file), HostLinux::Ipv6Half::InForce);
      setIpv6Half(file, HostLinux::Ipv6Half::Kept);
    },
    [](std::string_view text) { HostLinux::parseLease(text); },
    [](std::string_view text) { HostLinux::ovsBridgesIn(std::string(text)); },
    [](std::string_view text) { HostLinux::withRenamedHost(text, "a.b", "c"); },
    [](std::string_view text) { HostLinux::addressesIn(std::string(text)); },
    [](std::string_view text) { HostLinux::processorsFrom(text); },
    [](std::string_view text) { HostLinux::memoryFrom(text, 4096); },
    [](std::string_view text) { HostLinux::parseOption(text); },
    [](std::string_view text) { HostLinux::optionFile(text); },
    [](std::string_view text) { HostLinux::versionFrom(text, std::string(text), text); },
    [](std::string_view text) { HostLinux::dnsFrom("host", HostLinux::parseResolverFile(text)); },
    [](std::string_view text) {
      HostLinux::dnsFrom(text, {.nameServers = {}, .search = {"example.org"}});
    },
    [](std::string_view text) {
      if (const auto address = HostCtl::Network::parseIpAddress(std::string(text)))
        toString(*address);
    },
    [](std::string_view text) { HostCtl::Network::withoutHostName(text, text.substr(0, 4)); },
    [](std::string_view text) {
      std::istringstream file{std::string(text)};
      const auto pages = Kiva::readSupportPages(file);
      const int width = static_cast<int>(text.size() % 140),
                height = static_cast<int>(text.size() % 50);
      for (std::size_t page = 0; page < pages.size() && page < 8; ++page)
        Kiva::supportPageText(pages, page, width, height);
    }};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
  kReaders[data[0] % std::size(kReaders)](text);
  return 0;
}
