// SPDX-License-Identifier: MIT
#include "console/fact_format.h"
#include "console/host_facts.h"
#include "core/log.h"
#include "system/run_command.h"

namespace Kiva {

namespace {

/// Anyone at the machine can type a keyword into a login name, so a tool that hangs must not take
/// the console with it.
constexpr int kKeywordSeconds = 10;
constexpr std::size_t kTextCapacity = 511;

std::string certificateFingerprint(const char* digest) {
  const CommandResult result =
      RunCommand({.path = "/bin/openssl",
                  .arguments = {"openssl", "x509", "-in", "/etc/corvo/ssl/rui.crt", "-noout",
                                "-fingerprint", digest},
                  .outputCapacity = kTextCapacity,
                  .timeOutSeconds = kKeywordSeconds});
  return result.status == 0 ? certificateDigest(result.output) : "";
}

std::string hostKey(const char* file) {
  const CommandResult result = RunCommand({.path = "/usr/lib/corvo/openssh/bin/ssh-keygen",
                                           .arguments = {"ssh-keygen", "-l", "-f", file},
                                           .outputCapacity = kTextCapacity,
                                           .errorCapacity = kTextCapacity,
                                           .timeOutSeconds = kKeywordSeconds});
  if (result.status == 0) return hostKeyFingerprint(result.output);
  logInfo("Error generating SSH Key Fingerprint: %s", result.errors.c_str());
  return {};
}

}  // namespace

std::string certificateSha1() {
  return certificateFingerprint("-sha1");
}
std::string certificateSha256() {
  return certificateFingerprint("-sha256");
}
std::string dsaHostKey() {
  return hostKey("/etc/ssh/ssh_host_dsa_key");
}
std::string rsaHostKey() {
  return hostKey("/etc/ssh/ssh_host_rsa_key");
}

}  // namespace Kiva
