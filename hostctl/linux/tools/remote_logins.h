// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace HostLinux {

/// The texts of lockdown, as values: what it puts into the files of remote logins.

/// The PAM service `text` with a line at its top that refuses every account that the file `list`
/// does not name, and every account without that file. Marking twice is marking once.
std::string markedService(std::string_view text, const std::string& list);

/// The service as it was before it was marked.
std::string unmarkedService(std::string_view text);

/// The SSH server's part: refuses all accounts but these.
std::string sshRefusal(const std::vector<std::string>& accounts);

/// Whether an SSH server with this configuration reads the files of `folder` for every connection.
bool readsDropIns(std::string_view configuration, const std::string& folder);

}  // namespace HostLinux
