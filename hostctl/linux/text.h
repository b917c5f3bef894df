// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace HostLinux {

/// The small pieces that the readers of the machine's text files share.

std::string_view trim(std::string_view text);
std::vector<std::string_view> lines(std::string_view text);
std::vector<std::string_view> words(std::string_view text);
bool equalIgnoringCase(std::string_view a, std::string_view b);

/// The time in UTC, such as 2026-11-21T14:00:00Z.
std::string timeText();

/// The whole text as a decimal number that fits, or nothing.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// Letters, digits, ".", "_" and "-", the first neither "." nor "-": a name that is no path, no
/// option and nothing that a shell would change.
bool isPlainName(std::string_view name);

using Assignments = std::map<std::string, std::string>;

/// A file of shell-like assignments (os-release, vconsole.conf and their kind): KEY=VALUE lines,
/// the value bare or in quotes with backslash escapes; comments and everything else are passed
/// over.
Assignments parseAssignments(std::string_view text);

/// The file `text` with `key` set to `value`, which is plain, and everything else as it was.
std::string withAssignment(std::string_view text, std::string_view key, std::string_view value);

/// The value of `key`, or an empty text.
std::string valueOf(const Assignments& assignments, const std::string& key);

}  // namespace HostLinux
