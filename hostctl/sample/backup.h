// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace HostSample {

/// Where the built-in sample lies, beside the running program.
std::filesystem::path builtInSample();

/// Copies host.json of the sample host in `directory` to backup/host-N.json there, N one above the
/// last; the last ten stay. Returns the copy's name. Throws HostCtlException.
std::string saveBackup(const std::filesystem::path& directory);

}  // namespace HostSample
