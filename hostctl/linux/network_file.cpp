// SPDX-License-Identifier: MIT
#include "linux/network_file.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>

#include "linux/network/ini_file.h"
#include "linux/text.h"

namespace HostLinux {

namespace {

bool isOneOf(std::string_view value, std::initializer_list<const char*> words) {
  return std::any_of(words.begin(), words.end(),
                     [&](const char* word) { return equalIgnoringCase(value, word); });
}

}  // namespace

std::map<std::string, std::string> filesForNetworkd(const Files& files, const std::string& below) {
  std::map<std::string, std::string> paths;
  for (const char* root : {"/etc", "/run", "/usr/local/lib", "/usr/lib", "/lib"}) {
    const std::filesystem::path folder = std::filesystem::path(root) / "systemd/network" / below;
    for (const auto& name : files.List(folder)) paths.try_emplace(name, folder / name);
  }
  return paths;
}

bool meansYes(std::string_view value) {
  return isOneOf(value, {"yes", "true", "on", "1", "y", "t"});
}

bool meansDhcpv4(std::string_view value) {
  return meansYes(value) || isOneOf(value, {"both", "ipv4", "v4"});
}

bool meansDhcpv6(std::string_view value) {
  return meansYes(value) || isOneOf(value, {"both", "ipv6", "v6"});
}

bool asksForDhcpv4(std::string_view networkFile) {
  return meansDhcpv4(IniFile(networkFile).Get("Network", "DHCP").value_or(""));
}

std::string networkFileOf(const Files& files, int index) {
  const auto state = files.Read("/run/systemd/netif/links/" + std::to_string(index));
  return valueOf(parseAssignments(state.value_or("")), "NETWORK_FILE");
}

bool interfaceAsksForDhcpv4(const Files& files, int index) {
  const std::string name = networkFileOf(files, index);
  return !name.empty() && asksForDhcpv4(files.Read(name).value_or(""));
}

}  // namespace HostLinux
