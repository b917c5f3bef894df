// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace Kiva {

// How facts about the host are written: functions from values to texts.

/// The keyword's memory size, rounded up to 256 MiB, with at most one truncated decimal: "16 GB".
std::string memoryText(std::uint64_t bytes);

/// The welcome screen's memory size, rounded to one decimal at most: "15.9 GiB Memory".
std::string welcomeMemoryText(std::uint64_t bytes);

/// The digest in what openssl prints for a certificate, "SHA1 Fingerprint=AB:CD:..."; empty when
/// the text is another. openssl 3 writes "sha1".
std::string certificateDigest(std::string openssl);

/// The second word of what ssh-keygen prints for a key, "3072 SHA256:... root@host (RSA)".
std::string hostKeyFingerprint(const std::string& sshKeygen);

}  // namespace Kiva
