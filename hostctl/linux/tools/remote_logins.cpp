// SPDX-License-Identifier: MIT
#include "linux/tools/remote_logins.h"

#include <algorithm>

#include "linux/text.h"

namespace HostLinux {

namespace {

constexpr std::string_view kMark = "# lockdown, put here by kiva-tools";

std::string_view firstLine(std::string_view text) {
  return text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
}

}  // namespace

std::string markedService(std::string_view text, const std::string& list) {
  return "account requisite pam_listfile.so onerr=fail item=user sense=allow file=" + list + " " +
         std::string(kMark) + "\n" + unmarkedService(text);
}

std::string unmarkedService(std::string_view text) {
  std::string kept;
  while (!text.empty()) {
    const std::string_view line = firstLine(text);
    if (!trim(line).ends_with(kMark)) kept += line;
    text.remove_prefix(line.size());
  }
  return kept;
}

// Not AllowUsers: that adds to the accounts which another file of the server allows.
std::string sshRefusal(const std::vector<std::string>& accounts) {
  std::string pattern = "*";
  for (const std::string& account : accounts) pattern += ",!" + account;
  return "# Lockdown, put here by kiva-tools.\nMatch User " + pattern + "\n  DenyUsers *\n";
}

bool readsDropIns(std::string_view configuration, const std::string& folder) {
  for (const std::string_view line : lines(configuration)) {
    const auto all = words(line);
    if (all.empty()) continue;
    if (equalIgnoringCase(all.front(), "Match")) return false;
    if (!equalIgnoringCase(all.front(), "Include")) continue;
    for (const std::string_view file : all)
      if (file == folder + "/*.conf") return true;
  }
  return false;
}

}  // namespace HostLinux
