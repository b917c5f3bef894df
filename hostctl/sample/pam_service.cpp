// SPDX-License-Identifier: MIT
#include "sample/pam_service.h"

#include <fstream>

#include "sample/file_tools.h"

namespace HostSample {

namespace {

constexpr const char* kOwnComment = "# Logins of the sample host: the accounts of its host.json.\n";

/// PAM reads a word in brackets as it is, blanks included.
std::string bracketed(const std::string& word) {
  std::string text = "[";
  for (const char c : word) {
    if (c == ']') text += '\\';
    text += c;
  }
  return text + "]";
}

// A service that an operator of the sample has written stays; ours names folders that may have
// moved.
bool isOwn(const std::filesystem::path& service) {
  std::string firstLine;
  std::getline(std::ifstream(service), firstLine);
  return firstLine + "\n" == kOwnComment;
}

}  // namespace

std::string pamServiceText(const std::filesystem::path& module,
                           const std::filesystem::path& hostFile) {
  std::string text = kOwnComment;
  for (const char* type : {"auth", "account", "password"})
    text.append(type).append(" required " + bracketed(module) + " " + bracketed(hostFile) + "\n");
  return text;
}

void ensurePamService(const std::filesystem::path& directory,
                      const std::filesystem::path& hostFile) {
  const auto service = directory / "kiva";
  const bool fresh = std::filesystem::create_directory(directory);
  if (!fresh && !isOwn(service)) return;
  const auto module = programFolder().parent_path() / "lib/kiva/pam_kiva_sample.so";
  replaceFile(service, pamServiceText(module, hostFile));
}

}  // namespace HostSample
