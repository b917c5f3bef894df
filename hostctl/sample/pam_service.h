// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace HostSample {

/// The text of a PAM service file that logs in, checks and changes the accounts of `hostFile` with
/// the sample's PAM module. Both paths are absolute.
std::string pamServiceText(const std::filesystem::path& module,
                           const std::filesystem::path& hostFile);

/// Makes `directory` with the service "kiva", or brings the one it made before up to date with
/// where the module and the host lie now. A service that somebody else wrote there stays.
void ensurePamService(const std::filesystem::path& directory,
                      const std::filesystem::path& hostFile);

}  // namespace HostSample
