// SPDX-License-Identifier: MIT
#include "linux/settings.h"

#include <syslog.h>

#include <algorithm>
#include <limits>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::replaceFile;

namespace {

constexpr const char* kFirewall = "/etc/corvo/firewall/";
constexpr const char* kAlertFile = "/run/corvo/alert";

std::string fileText(const HostCtl::Adv::OptionValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number) + "\n";
  return "\"" + std::get<std::string>(value) + "\"\n";
}

bool readFlag(const Files& files, const std::string& file) {
  return files.ReadLine(file) == "1";
}

void writeSetting(const Files& files, const char* operation, const std::string& file,
                  const std::string& text) try {
  replaceFile(files.Path(file), text);
} catch (const std::system_error& error) {
  throw HostCtlException(operation, file, error.code().message());
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
    if (isPlainName(id)) rulesets.push_back({id, readFlag(files, kFirewall + id)});
  return rulesets;
}

bool readFeature(const Files& files, HostCtl::System::Feature feature) {
  return readFlag(files, "/etc/corvo/features/" + std::string(nameOf(feature)));
}

void writeOption(const Files& files, const std::string& path,
                 const HostCtl::Adv::OptionValue& value) {
  const auto file = optionFile(path);
  if (!file) throw HostCtlException("SetOption", path, "not the path of an option");
  const std::string text = fileText(value);
  if (text.find('\n') + 1 != text.size())
    throw HostCtlException("SetOption", path, "a value has one line");
  writeSetting(files, "SetOption", *file, text);
}

void writeFirewallRuleset(const Files& files, const std::string& id, bool enabled) {
  if (!isPlainName(id) || !files.Exists(kFirewall + id))
    throw HostCtlException("SetFirewallRuleset", id, "there is no such ruleset");
  writeSetting(files, "SetFirewallRuleset", kFirewall + id, enabled ? "1\n" : "0\n");
}

void raiseAlert(const Files& files, const std::string& text) {
  const std::string line = oneLine(text);
  try {
    replaceFile(files.Path(kAlertFile), line + "\n");
  } catch (const std::system_error&) {
    // The line in the log is what remains.
  }
  syslog(LOG_USER | LOG_WARNING, "System alert: %s", line.c_str());
}

}  // namespace HostLinux
