// SPDX-License-Identifier: MIT
#include "linux/user_accounts.h"

#include <system_error>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::replaceFile;

namespace {

constexpr mode_t kRootOnly = 0600;

bool hasPassword(std::string_view line) {
  const auto colon = line.find(':');
  if (colon == std::string_view::npos || colon + 1 == line.size()) return false;
  const char first = line[colon + 1];
  return first != '!' && first != '*' && first != ':';
}

}  // namespace

std::string readAccounts(const Files& files) {
  const auto shadow = files.Read("/etc/shadow");
  if (!shadow) throw HostCtlException("ReadUserAccounts", "/etc/shadow", "cannot be read");
  std::string accounts;
  for (const std::string_view line : lines(*shadow))
    if (hasPassword(line)) accounts.append(line).append("\n");
  return accounts;
}

void storeAccounts(const Files& files) try {
  replaceFile(files.Path(kStoredAccounts), readAccounts(files), kRootOnly);
} catch (const std::system_error& error) {
  throw HostCtlException("StoreUserAccountsToCs", kStoredAccounts, error.code().message());
}

}  // namespace HostLinux
