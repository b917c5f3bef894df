// SPDX-License-Identifier: MIT
#include <array>

#include "hosttools/tools.h"

namespace HostTools {

namespace {

constexpr int kNoKey = 255;

ToolAnswer fingerprintOf(StandInHost& host, const std::string& file, const std::string& digest) {
  if (const auto found = host.FindCertificateFingerprint(file, digest))
    return {0, digest + " Fingerprint=" + *found + "\n", ""};
  return {1, "", "Could not open file or uri for loading certificate from " + file + "\n"};
}

ToolAnswer keyFingerprint(StandInHost& host, const Call& call) {
  const auto key = host.FindHostKey(call["-f"]);
  if (!key) return {kNoKey, "", "ssh-keygen: " + call["-f"] + ": No such file or directory\n"};
  return {0,
          std::to_string(key->bits) + " " + key->fingerprint + " " + key->comment + " (" +
              key->type + ")\n",
          ""};
}

constexpr std::array<Command<StandInHost>, 2> kCertificate = {{
    {"x509 -in FILE -noout -fingerprint -sha1", "a certificate's SHA-1 thumbprint", Effect::Reads,
     [](StandInHost& host, const Call& call) { return fingerprintOf(host, call["-in"], "sha1"); }},
    {"x509 -in FILE -noout -fingerprint -sha256", "its SHA-256 thumbprint", Effect::Reads,
     [](StandInHost& host, const Call& call) {
       return fingerprintOf(host, call["-in"], "sha256");
     }},
}};

constexpr std::array<Command<StandInHost>, 1> kHostKey = {{
    {"-l -f FILE", "a host key's length, fingerprint, comment and type", Effect::Reads,
     keyFingerprint},
}};

}  // namespace

constinit const Tool<StandInHost> kOpenssl = {
    "/bin/openssl", "Stands in for the certificate tool.\n", 60, kCertificate};

constinit const Tool<StandInHost> kSshKeygen = {
    "/usr/lib/corvo/openssh/bin/ssh-keygen", "Stands in for the host keys' tool.\n", 60, kHostKey};

}  // namespace HostTools
