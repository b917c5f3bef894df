// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace HostCtl::Network {

/// Whoever works on the hosts file holds a lock (flock) on this one.
inline constexpr const char* kHostsFileLock = "/var/run/kiva-hosts.lock";

/// The host's own table of names, which name resolution asks before any server. Throws
/// HostCtlException when the host fails.
class HostsFile {
 public:
  virtual ~HostsFile() = default;
  /// Takes a name, first or alias and whatever its case, out of every entry; an entry that has no
  /// other is gone. Everything else in the file stays byte for byte.
  virtual void RemoveEntryByHostName(const std::string& name) = 0;
};

/// That change on the text of a hosts file. The comment behind an entry stays.
std::string withoutHostName(std::string_view text, std::string_view name);

/// Undoes it in a text that others have changed since: `text` with the lines back that had the name
/// in `before`, in the place of what was left of them, else at the end. A text that has the name
/// again stays as it is.
std::string withHostNameOf(std::string_view text, std::string_view before, std::string_view name);

}  // namespace HostCtl::Network
