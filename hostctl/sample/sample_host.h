// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace HostSample {

/// Puts the sample host kept in `directory` under the program: its `host.json` is the host's state,
/// `root/` holds its files, and everything that leaves the program is a line of `journal`. Throws
/// SampleHostError, with one line that names the file and the key, when `host.json` cannot be used.
void useSampleHost(const std::filesystem::path& directory);

}  // namespace HostSample
