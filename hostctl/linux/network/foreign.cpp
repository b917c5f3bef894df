// SPDX-License-Identifier: MIT
#include "linux/network/foreign.h"

#include <fnmatch.h>

#include <filesystem>

#include "hostctl/lib/exception.h"
#include "linux/network_file.h"
#include "linux/pnics.h"
#include "linux/text.h"

namespace HostLinux {

namespace fs = std::filesystem;

namespace {

const fs::path kIfupdown = "/etc/network/interfaces";
constexpr int kDeepestSource = 8;

std::string stanzaIn(const Files& files, const fs::path& file, const std::string& interface,
                     int depth);

/// Looks into the files of a folder whose names fit `pattern`.
std::string stanzaIn(const Files& files, const fs::path& folder, const std::string& pattern,
                     const std::string& interface, int depth) {
  for (const auto& name : files.List(folder))
    if (fnmatch(pattern.c_str(), name.c_str(), FNM_PERIOD) == 0)
      if (auto found = stanzaIn(files, folder / name, interface, depth + 1); !found.empty())
        return found;
  return {};
}

/// "eth0:1" is a second address of eth0.
bool isAbout(std::string_view stanza, const std::string& interface) {
  return stanza.substr(0, stanza.find(':')) == interface;
}

std::string stanzaIn(const Files& files, const fs::path& file, const std::string& interface,
                     int depth) {
  if (depth > kDeepestSource) return {};
  const std::string text = files.Read(file).value_or("");
  for (const std::string_view line : lines(text)) {
    const auto said = words(line);
    if (said.size() < 2) continue;
    if (said[0] == "iface" && isAbout(said[1], interface)) return file;
    const fs::path named = kIfupdown.parent_path() / said[1];
    std::string found;
    if (said[0] == "source")
      found = stanzaIn(files, named.parent_path(), named.filename(), interface, depth);
    if (said[0] == "source-directory") found = stanzaIn(files, named, "*", interface, depth);
    if (!found.empty()) return found;
  }
  return {};
}

bool networkManagerHas(const Files& files, int index) {
  const auto state = files.Read("/run/NetworkManager/devices/" + std::to_string(index));
  return state && meansYes(valueOf(parseAssignments(*state), "managed"));
}

/// The file in force when it stands before ours, else nothing.
std::string earlierNetworkFile(const Files& files, int index) {
  const fs::path inForce = networkFileOf(files, index);
  return inForce.filename().string() < kOwnNetworkFiles ? inForce.string() : "";
}

}  // namespace

int indexOf(const Files& files, const std::string& interface) {
  const auto index = parseInteger(files.ReadLine("/sys/class/net/" + interface + "/ifindex"));
  return static_cast<int>(index.value_or(0));
}

std::string otherManagerOf(const Files& files, const std::string& interface) {
  if (interface == kManagementNic) return {};
  if (const auto file = stanzaIn(files, kIfupdown, interface, 0); !file.empty())
    return "ifupdown (" + file + ")";
  return networkManagerHas(files, indexOf(files, interface)) ? "NetworkManager" : "";
}

std::string foreignManagerOf(const Files& files, const std::string& interface) {
  const auto other = otherManagerOf(files, interface);
  return other.empty() ? earlierNetworkFile(files, indexOf(files, interface)) : other;
}

void refuseForeign(const Files& files, const std::string& operation, const std::string& interface) {
  using HostCtl::Lib::HostCtlException;
  if (indexOf(files, interface) == 0)
    throw HostCtlException(operation, interface, "there is no such interface");
  if (const auto manager = foreignManagerOf(files, interface); !manager.empty())
    throw HostCtlException(operation, interface, "is configured by " + manager);
}

}  // namespace HostLinux
