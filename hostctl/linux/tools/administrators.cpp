// SPDX-License-Identifier: MIT
#include "linux/tools/administrators.h"

#include <grp.h>
#include <pwd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <vector>

namespace HostLinux {

namespace {

constexpr std::array kAdministrators = {"sudo"};
constexpr std::size_t kMostBytes = 1 << 20;

struct Account {
  uid_t user;
  gid_t group;
};

/// Calls one of the get...nam_r functions again with more memory until it has enough.
template <typename Call>
void withMemory(Call call) {
  std::vector<char> memory(1024);
  while (call(memory.data(), memory.size()) == ERANGE && memory.size() < kMostBytes)
    memory.resize(memory.size() * 2);
}

std::optional<Account> findAccount(const std::string& user) {
  passwd entry{};
  passwd* found = nullptr;
  withMemory([&](char* memory, std::size_t size) {
    return getpwnam_r(user.c_str(), &entry, memory, size, &found);
  });
  if (found == nullptr) return std::nullopt;
  return Account{entry.pw_uid, entry.pw_gid};
}

std::optional<gid_t> findGroup(const char* name) {
  group entry{};
  group* found = nullptr;
  withMemory([&](char* memory, std::size_t size) {
    return getgrnam_r(name, &entry, memory, size, &found);
  });
  if (found == nullptr) return std::nullopt;
  return entry.gr_gid;
}

std::vector<gid_t> groupsOf(const std::string& user, gid_t group) {
  std::vector<gid_t> groups(16);
  int count = static_cast<int>(groups.size());
  while (getgrouplist(user.c_str(), group, groups.data(), &count) < 0)
    groups.resize(static_cast<std::size_t>(count));
  groups.resize(static_cast<std::size_t>(count));
  return groups;
}

}  // namespace

bool mayAdminister(const std::string& user) {
  const auto account = findAccount(user);
  if (!account) return false;
  if (account->user == 0) return true;
  const auto groups = groupsOf(user, account->group);
  return std::any_of(kAdministrators.begin(), kAdministrators.end(), [&](const char* name) {
    const auto administrators = findGroup(name);
    return administrators &&
           std::find(groups.begin(), groups.end(), *administrators) != groups.end();
  });
}

}  // namespace HostLinux
