// SPDX-License-Identifier: MIT
#include "hosttools/tool.h"

namespace HostTools {

namespace {

ToolAnswer fingerprintOf(ToolHost& host, const std::string& file, const std::string& digest) {
  if (const auto found = host.FindCertificateFingerprint(file, digest))
    return {0, digest + " Fingerprint=" + *found + "\n", ""};
  return {1, "", "Could not open file or uri for loading certificate from " + file + "\n"};
}

}  // namespace

ToolAnswer openssl(ToolHost& host, Arguments arguments) {
  const bool asked = arguments.size() == 6 && arguments[0] == "x509" && arguments[1] == "-in" &&
                     arguments[3] == "-noout" && arguments[4] == "-fingerprint";
  if (asked && arguments[5] == "-sha1") return fingerprintOf(host, arguments[2], "sha1");
  if (asked && arguments[5] == "-sha256") return fingerprintOf(host, arguments[2], "sha256");
  return {1, "", "openssl: expected x509 -in FILE -noout -fingerprint -sha1|-sha256\n"};
}

ToolAnswer sshKeygen(ToolHost& host, Arguments arguments) {
  if (arguments.size() != 3 || arguments[0] != "-l" || arguments[1] != "-f")
    return {1, "", "ssh-keygen: expected -l -f FILE\n"};
  const auto key = host.FindHostKey(arguments[2]);
  if (!key) return {255, "", "ssh-keygen: " + arguments[2] + ": No such file or directory\n"};
  return {0,
          std::to_string(key->bits) + " " + key->fingerprint + " " + key->comment + " (" +
              key->type + ")\n",
          ""};
}

}  // namespace HostTools
