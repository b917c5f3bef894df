// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "linux/files.h"

namespace HostLinux {

/// Where networkd keeps the administrator's files, and how the names of those begin that Kiva
/// writes there. Without them the host's network is as it was delivered.
inline constexpr const char* kNetworkFolder = "/etc/systemd/network";
inline constexpr std::string_view kOwnNetworkFiles = "10-kiva-";

/// The files that networkd reads, by their names, with their paths: of those that have the same
/// name the one that counts. `below` is a folder in networkd's ("50-all.network.d", for drop-ins).
std::map<std::string, std::string> filesForNetworkd(const Files& files,
                                                    const std::string& below = {});

// What networkd takes for a yes, and for a DHCP= that means one family; old spellings included.
bool meansYes(std::string_view value);
bool meansDhcpv4(std::string_view value);
bool meansDhcpv6(std::string_view value);

/// Whether the text of a `.network` file asks for an IPv4 address by DHCP.
bool asksForDhcpv4(std::string_view networkFile);

/// The `.network` file that networkd says is in force for an interface, by its index; empty for
/// none.
std::string networkFileOf(const Files& files, int index);

/// Whether the file in force for an interface asks for an IPv4 address by DHCP.
/// Read from files alone, so that the first screen can say that the host waits for its lease
/// without waiting for networkd. Drop-ins of the file are not looked at.
bool interfaceAsksForDhcpv4(const Files& files, int index);

}  // namespace HostLinux
