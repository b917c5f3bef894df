// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace HostSample {

/// The text of a PAM service file that logs in, checks and changes the accounts of `hostFile` with
/// the sample's PAM module. Both paths are absolute.
std::string pamServiceText(const std::filesystem::path& module,
                           const std::filesystem::path& hostFile);

/// Makes `directory` with the service "kiva" unless it is there already.
void ensurePamService(const std::filesystem::path& directory,
                      const std::filesystem::path& hostFile);

}  // namespace HostSample
