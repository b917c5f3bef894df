// SPDX-License-Identifier: MIT
#include "linux/tools/configuration.h"

#include <filesystem>
#include <map>
#include <system_error>
#include <vector>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/folder_lock.h"
#include "linux/network/ipv6_switch.h"
#include "linux/run_program.h"
#include "linux/staging_folder.h"
#include "linux/text.h"
#include "linux/user_accounts.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::replaceFile;
namespace fs = std::filesystem;

namespace {

constexpr const char* kOperation = "SaveConfiguration";
constexpr std::string_view kPrefix = "configuration-";
constexpr std::size_t kKept = 10;
constexpr std::chrono::seconds kPackedWithin{60};
constexpr const char* kStaged = "archive";

/// The archives that are there, by their versions.
std::map<std::int64_t, std::string> archivesIn(const Files& files) {
  std::map<std::int64_t, std::string> archives;
  for (const std::string& name : files.List(kSavedConfigurations)) {
    if (!name.starts_with(kPrefix)) continue;
    const auto number = std::string_view(name).substr(kPrefix.size());
    if (const auto version = parseInteger(number.substr(0, number.find('-'))))
      archives[*version] = name;
  }
  return archives;
}

/// What is saved of the host's files and is there, as an archive names it.
std::vector<std::string> savedFiles(const Files& files) {
  std::vector<std::string> candidates = {"/etc/corvo", "/etc/systemd/network", kIpv6SwitchFile,
                                         "/etc/hosts", "/etc/hostname"};
  // A resolver service has a link there, to a file that is not configuration.
  if (files.LinkName("/etc/resolv.conf").empty()) candidates.push_back("/etc/resolv.conf");
  for (const std::string& name : files.List("/etc/network"))
    if (name.starts_with("interfaces")) candidates.push_back("/etc/network/" + name);
  std::vector<std::string> names;
  for (const std::string& path : candidates)
    if (files.Exists(path)) names.push_back(path.substr(1));
  return names;
}

void pack(const Files& files, const std::string& staging) {
  std::vector<std::string> arguments = {
      "tar",           "--create",    "--file",      staging + "/" + kStaged,
      "--force-local", "--sort=name", "--directory", staging,
      "VERSION",       "accounts",    "--directory", files.Path("/")};
  const auto names = savedFiles(files);
  arguments.insert(arguments.end(), names.begin(), names.end());
  const ProgramResult result = runProgram({"/bin/tar", arguments}, kPackedWithin);
  if (result.status != 0) throw HostCtlException(kOperation, kSavedConfigurations, causeOf(result));
}

void removeOldest(const Files& files) {
  auto archives = archivesIn(files);
  for (; archives.size() > kKept; archives.erase(archives.begin()))
    fs::remove(files.Path(kSavedConfigurations) + "/" + archives.begin()->second);
}

}  // namespace

std::string saveConfiguration(const Files& files) try {
  const std::string accounts = readAccounts(files);
  const std::string folder = files.Path(kSavedConfigurations);
  makeOwnersFolder(folder);
  const StagingFolder staging(folder);
  const auto archives = archivesIn(files);
  const std::string version = std::to_string(archives.empty() ? 1 : archives.rbegin()->first + 1);
  const std::string time = timeText();
  replaceFile(staging.Path() + "/VERSION", "version=" + version + "\nsaved=" + time + "\n", 0600);
  replaceFile(staging.Path() + "/accounts", accounts, 0600);
  pack(files, staging.Path());
  const std::string date = time.substr(0, time.find('T'));
  const std::string name = std::string(kPrefix) + version + "-" + date + ".tar";
  staging.Publish(kStaged, name);
  removeOldest(files);
  return std::string(kSavedConfigurations) + "/" + name;
} catch (const std::system_error& error) {
  throw HostCtlException(kOperation, kSavedConfigurations, error.code().message());
}

}  // namespace HostLinux
