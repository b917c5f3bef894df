// SPDX-License-Identifier: MIT
#include "linux/network_file.h"

#include <algorithm>
#include <iterator>

#include "linux/text.h"

namespace HostLinux {

namespace {

// The words that networkd takes for "both families" and for "IPv4", old spellings included.
constexpr const char* kYes[] = {"yes", "true", "on", "1", "y", "t", "both", "ipv4", "v4"};

bool meansDhcpv4(std::string_view value) {
  return std::any_of(std::begin(kYes), std::end(kYes),
                     [&](const char* yes) { return equalIgnoringCase(value, yes); });
}

}  // namespace

bool asksForDhcpv4(std::string_view networkFile) {
  bool asks = false;
  bool inNetwork = false;
  for (std::string_view line : lines(networkFile)) {
    line = trim(line);
    if (line.starts_with('[')) inNetwork = line == "[Network]";
    const auto equals = line.find('=');
    if (inNetwork && equals != std::string_view::npos && trim(line.substr(0, equals)) == "DHCP")
      asks = meansDhcpv4(trim(line.substr(equals + 1)));
  }
  return asks;
}

bool interfaceAsksForDhcpv4(const Files& files, int index) {
  const auto state = files.Read("/run/systemd/netif/links/" + std::to_string(index));
  if (!state) return false;
  const std::string name = valueOf(parseAssignments(*state), "NETWORK_FILE");
  return !name.empty() && asksForDhcpv4(files.Read(name).value_or(""));
}

}  // namespace HostLinux
