// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "linux/files.h"
#include "linux/network/own_files.h"

namespace HostLinux {

// networkd reads one file for an interface. A first file of ours puts another one out of force, so
// it begins as what that says: gateways, routes, MTU and all that Kiva has no word for stay.

/// What a change of the interface's configuration starts from: the file of ours; else that of
/// somebody else in force; else a file that says what the kernel has.
IniFile interfaceFile(const Files& files, const OwnFiles& own, const std::string& operation,
                      const std::string& interface);

/// Somebody else's file in force for the interface, with its drop-ins, as adoptedFile makes it.
std::optional<IniFile> fileOfOthers(const Files& files, const std::string& interface);

/// The same of the file at `path`, whether it is in force or not.
IniFile fileOfOthers(const Files& files, const std::filesystem::path& path,
                     const std::string& interface);

/// The text of somebody else's file as one of ours about this interface alone. Addresses and
/// default gateways that stand in sections of their own, and say no more, go where Kiva keeps them.
IniFile adoptedFile(std::string_view text, const std::string& interface);

/// Whether ipConfigIn reads all addresses in an adopted file.
bool isUnderstood(const IniFile& adopted);

}  // namespace HostLinux
