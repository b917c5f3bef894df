// SPDX-License-Identifier: MIT
#include "sample/pam_service.h"

#include "sample/file_tools.h"

namespace HostSample {

namespace {

/// PAM reads a word in brackets as it is, blanks included.
std::string bracketed(const std::string& word) {
  std::string text = "[";
  for (const char c : word) {
    if (c == ']') text += '\\';
    text += c;
  }
  return text + "]";
}

}  // namespace

std::string pamServiceText(const std::filesystem::path& module,
                           const std::filesystem::path& hostFile) {
  std::string text = "# Logins of the sample host: the accounts of its host.json.\n";
  for (const char* type : {"auth", "account", "password"})
    text.append(type).append(" required " + bracketed(module) + " " + bracketed(hostFile) + "\n");
  return text;
}

void ensurePamService(const std::filesystem::path& directory,
                      const std::filesystem::path& hostFile) {
  if (!std::filesystem::create_directory(directory)) return;
  const auto module = programFolder().parent_path() / "lib/kiva/pam_kiva_sample.so";
  createFile(directory / "kiva", pamServiceText(module, hostFile));
}

}  // namespace HostSample
