// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <stdexcept>

namespace HostSample {

/// A sample host that cannot be used. Its text is one line that names the file, and the key in it.
class SampleHostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Puts the sample host kept in `directory` under the program: its `host.json` is the host's state,
/// `root/` holds its files, and everything that leaves the program is a line of `journal`. A
/// missing `pam.d` is made, with a service "kiva" over the accounts of `host.json`; one that exists
/// is left as it is. A host that was shut down is up again. Throws SampleHostError when the
/// directory cannot serve as a host.
void useSampleHost(const std::filesystem::path& directory);

/// The same for the tools of a host: neither its state nor its PAM service changes.
void openSampleHost(const std::filesystem::path& directory);

}  // namespace HostSample
