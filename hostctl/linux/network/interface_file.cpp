// SPDX-License-Identifier: MIT
#include "linux/network/interface_file.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>

#include "linux/network/foreign.h"
#include "linux/network/ip_file.h"
#include "linux/network/ipv6_switch.h"
#include "linux/network/nic_reader.h"
#include "linux/network_file.h"

namespace HostLinux {

using HostCtl::Network::IpConfig;

namespace {

constexpr const char* kNetwork = "Network";
constexpr const char* kAddress = "Address";
constexpr const char* kRoute = "Route";
constexpr const char* kGateway = "Gateway";
constexpr const char* kOwnDropIns = "kiva-";

bool saysOnly(const IniSection& section, std::initializer_list<std::string_view> known) {
  const auto keys = section.Keys();
  return std::all_of(keys.begin(), keys.end(), [&](const std::string& key) {
    return std::find(known.begin(), known.end(), key) != known.end();
  });
}

bool isPlainAddress(const IniSection& section) {
  return section.Get(kAddress) && saysOnly(section, {kAddress});
}

bool isPlainDefaultRoute(const IniSection& section) {
  const auto to = section.Get("Destination").value_or("");
  const auto gateway = section.Get(kGateway);
  return (to.empty() || to == "0.0.0.0/0" || to == "::/0") && gateway &&
         HostCtl::Network::parseIpAddress(*gateway) && saysOnly(section, {"Destination", kGateway});
}

/// Moves the values of `key` from those sections into [Network].
void fold(IniFile& file, const char* section, const char* key,
          const std::function<bool(const IniSection&)>& isPlain) {
  std::vector<std::string> values;
  for (const IniSection* one : file.Sections(section))
    if (isPlain(*one)) values.push_back(one->Get(key).value());
  for (const auto& value : values) file.Add(kNetwork, key, value);
  file.RemoveSections(section, isPlain);
}

/// The drop-ins of a file, the last word last. Ours only hold a lease back.
std::string dropInsOf(const Files& files, const std::string& file) {
  std::string text;
  for (const auto& [name, path] : filesForNetworkd(files, file + ".d"))
    if (name.ends_with(".conf") && !name.starts_with(kOwnDropIns))
      text += "\n" + files.Read(path).value_or("");
  return text;
}

bool hasStaticGateway(const IpConfig& config) {
  return config.GetIpv6Enabled() && !config.GetIpv6UseDhcp() &&
         !config.GetIpv6UseRouterAdvertisement();
}

IniFile fileOfKernel(const Files& files, const std::string& operation,
                     const std::string& interface) {
  IniFile file;
  const auto nic = readKernelNic(files, operation, interface);
  if (!nic) return file;
  const IpConfig& now = nic->configured;
  setIpConfig(file, interface, now, ipv6ToBeOn(files) ? Ipv6Half::InForce : Ipv6Half::Kept);
  if (now.GetIpv4UseStatic()) setGateway(file, now.GetIpv4Gateway());
  if (hasStaticGateway(now)) setGateway(file, now.GetIpv6Gateway());
  return file;
}

}  // namespace

IniFile adoptedFile(std::string_view text, const std::string& interface) {
  IniFile file(text);
  file.RemoveSections("Match", [](const IniSection&) { return true; });
  file.Set("Match", "Name", interface);
  fold(file, kAddress, kAddress, isPlainAddress);
  fold(file, kRoute, kGateway, isPlainDefaultRoute);
  return file;
}

bool isUnderstood(const IniFile& adopted) {
  const IpConfig config = ipConfigIn(adopted);
  const auto& networks = config.GetIpv6Networks();
  const bool fromPool = (config.GetIpv4UseStatic() && config.GetIpv4Address().IsEmpty()) ||
                        std::any_of(networks.begin(), networks.end(),
                                    [](const auto& network) { return network.address.IsEmpty(); });
  return !fromPool && adopted.Sections(kAddress).empty();
}

std::optional<IniFile> fileOfOthers(const Files& files, const std::string& interface) {
  const std::filesystem::path path = networkFileOf(files, indexOf(files, interface));
  if (path.empty() || !files.Read(path)) return std::nullopt;
  return fileOfOthers(files, path, interface);
}

IniFile fileOfOthers(const Files& files, const std::filesystem::path& path,
                     const std::string& interface) {
  return adoptedFile(files.Read(path).value_or("") + dropInsOf(files, path.filename()), interface);
}

IniFile interfaceFile(const Files& files, const OwnFiles& own, const std::string& operation,
                      const std::string& interface) {
  const std::string name = ownFileName(interface, "network");
  if (own.Exists(name)) return own.Read(name);
  if (auto others = fileOfOthers(files, interface)) return std::move(*others);
  return fileOfKernel(files, operation, interface);
}

}  // namespace HostLinux
