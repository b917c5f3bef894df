// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Kiva {

// Facts about the host, each read afresh when it is asked for. They are the keywords of every text:
// an administrator's welcome message may contain "{hostname}". Facts that say nothing of a failure
// let HostCtlException pass.

/// The management interface's IPv4 address; "0.0.0.0" without one, and when the host cannot say.
std::string hostAddress();
/// Host name, a dot always, and the domain.
std::string hostName();
/// Empty when the host does not tell its version.
std::string productName();
/// "VERSION build-NUMBER", the number with at least five digits; empty when the host does not tell.
std::string productVersion();
std::string serialNumber();
std::string memorySize();
/// "N/A" where the host has none.
std::string serviceTag();

/// Numbers by which componentVersion knows its components.
namespace Component {
inline constexpr int kStorageAdapter = 1;
inline constexpr int kBmc = 2;
inline constexpr int kBios = 3;
inline constexpr int kAssetTag = 4;
}  // namespace Component

/// The version of a component; "N/A" where it is not found, and, logged, when the host fails to
/// say.
std::string componentVersion(int component);

/// The digest of the host's TLS certificate; empty when openssl gives none.
std::string certificateSha1();
std::string certificateSha256();
/// The fingerprint of the remote shell's host key; empty, and logged, when ssh-keygen gives none.
std::string dsaHostKey();
std::string rsaHostKey();

/// Makes every fact a keyword. Called once, before the first window.
void registerHostFacts();

}  // namespace Kiva
