// SPDX-License-Identifier: MIT
#include "linux/tools/units.h"

#include "hostctl/lib/exception.h"
#include "linux/run_program.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

constexpr const char* kSystemctl = "/usr/bin/systemctl";
constexpr const char* kInitScripts = "/etc/init.d/";
constexpr std::chrono::seconds kAskLimit{20};
constexpr std::chrono::seconds kChangeLimit{120};

ProgramResult run(std::vector<std::string> arguments, std::chrono::seconds limit) {
  arguments.insert(arguments.begin(), {"systemctl", "--no-ask-password", "--no-pager"});
  return runProgram({kSystemctl, std::move(arguments)}, limit);
}

bool isActive(const std::string& state) {
  return state == "active" || state == "activating" || state == "reloading";
}

}  // namespace

bool hasSystemd(const Files& files) {
  return files.Exists("/run/systemd/system");
}

bool isUnitName(std::string_view name) {
  constexpr std::string_view kAllowed =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789:_.@\\-";
  return !name.empty() && name.front() != '-' && name.front() != '.' &&
         name.find_first_not_of(kAllowed) == std::string_view::npos;
}

Unit parseUnit(const std::string& name, std::string_view text) {
  const Assignments values = parseAssignments(text);
  const std::string loaded = valueOf(values, "LoadState");
  if (loaded.empty() || loaded == "not-found" || loaded == "masked" ||
      valueOf(values, "SourcePath").starts_with(kInitScripts))
    return {name};
  return {name, true, isActive(valueOf(values, "ActiveState")),
          valueOf(values, "UnitFileState").starts_with("enabled")};
}

Unit readUnit(const std::string& operation, const std::string& name) {
  const ProgramResult result = run(
      {"show", "--property=LoadState,ActiveState,UnitFileState,SourcePath", "--", name}, kAskLimit);
  if (result.status != 0) throw HostCtlException(operation, name, causeOf(result));
  return parseUnit(name, result.output);
}

// systemd answers with a failure for a unit that it has not looked at yet, which has nothing to
// forget.
void forgetFailures(const std::vector<std::string>& names) {
  std::vector<std::string> arguments = {"reset-failed", "--"};
  arguments.insert(arguments.end(), names.begin(), names.end());
  run(std::move(arguments), kAskLimit);
}

void systemctl(const std::string& operation, const std::string& object,
               const std::vector<std::string>& arguments) {
  const ProgramResult result = run(arguments, kChangeLimit);
  if (result.status != 0) throw HostCtlException(operation, object, causeOf(result));
}

}  // namespace HostLinux
