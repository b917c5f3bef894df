// SPDX-License-Identifier: MIT
#include "linux/settings.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <syslog.h>

#include <algorithm>
#include <cstdio>
#include <limits>

#include "hostctl/lib/descriptor.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;

namespace {

constexpr const char* kAlertFolder = "/run/corvo";
constexpr const char* kAlertFile = "/run/corvo/alert";

bool isPlainName(std::string_view name) {
  constexpr std::string_view kAllowed =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
  return !name.empty() && name.front() != '.' &&
         name.find_first_not_of(kAllowed) == std::string_view::npos;
}

void replaceFile(const std::string& path, const std::string& text) {
  const std::string beside = path + ".new";
  {
    const Descriptor file(
        open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0644));
    const auto size = static_cast<ssize_t>(text.size());
    if (!file || write(file.Get(), text.data(), text.size()) != size) return;
  }
  rename(beside.c_str(), path.c_str());
}

std::string oneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

}  // namespace

HostCtl::Adv::OptionValue parseOption(std::string_view text) {
  text = trim(text);
  if (const auto number = parseInteger(text)) return *number;
  const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
  return std::string(quoted ? text.substr(1, text.size() - 2) : text);
}

std::optional<std::string> optionFile(std::string_view path) {
  std::string file = "/etc/corvo/options";
  if (!path.empty() && path.front() == '/') path.remove_prefix(1);
  for (bool more = true; more;) {
    const auto slash = path.find('/');
    const std::string_view name = path.substr(0, slash);
    if (!isPlainName(name)) return std::nullopt;
    file.append("/").append(name);
    more = slash != std::string_view::npos;
    path.remove_prefix(more ? slash + 1 : path.size());
  }
  return file;
}

std::optional<HostCtl::Adv::OptionValue> readOption(const Files& files, std::string_view path) {
  const auto file = optionFile(path);
  const auto text = file ? files.Read(*file) : std::nullopt;
  if (!text) return std::nullopt;
  return parseOption(*text);
}

std::string readWelcomeMessage(const Files& files) {
  return files.Read("/etc/corvo/welcome").value_or("");
}

int readBootOption(const Files& files) {
  const auto number = parseInteger(files.ReadLine("/etc/corvo/boot-option")).value_or(0);
  const bool fits = number >= 0 && number <= std::numeric_limits<int>::max();
  return fits ? static_cast<int>(number) : 0;
}

std::vector<HostCtl::System::FirewallRuleset> readFirewallRulesets(const Files& files) {
  std::vector<HostCtl::System::FirewallRuleset> rulesets;
  for (const auto& id : files.List("/etc/corvo/firewall"))
    if (isPlainName(id))
      rulesets.push_back({id, files.ReadLine("/etc/corvo/firewall/" + id) == "1"});
  return rulesets;
}

void SystemAlert::Raise(const Files& files, const std::string& text) {
  const std::string line = oneLine(text);
  if (line == last_) return;
  last_ = line;
  if (files.Read(kAlertFile) == line + "\n") return;
  mkdir(files.Path(kAlertFolder).c_str(), 0755);
  replaceFile(files.Path(kAlertFile), line + "\n");
  syslog(LOG_USER | LOG_WARNING, "System alert: %s", line.c_str());
}

}  // namespace HostLinux
