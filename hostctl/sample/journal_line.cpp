// SPDX-License-Identifier: MIT
#include "sample/journal_line.h"

#include <syslog.h>

#include <array>

namespace HostSample {

namespace {

constexpr std::array<std::string_view, 8> kPriorities = {"emerg",   "alert",  "crit", "err",
                                                         "warning", "notice", "info", "debug"};

/// By facility number. A line without a facility is the user's.
constexpr std::array<std::string_view, 24> kFacilities = {
    "",       "",       "mail",     "daemon", "auth",   "syslog", "lpr",    "news",
    "uucp",   "cron",   "authpriv", "ftp",    "12",     "13",     "14",     "15",
    "local0", "local1", "local2",   "local3", "local4", "local5", "local6", "local7"};

}  // namespace

std::string oneLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    if (c == '\n')
      line += "\\n";
    else
      line += c;
  }
  return line;
}

std::string journalLine(std::string_view kind, std::string_view text) {
  return std::string(kind) + '\t' + oneLine(text) + '\n';
}

std::string logKind(int priority) {
  const auto facility = static_cast<std::size_t>(LOG_FAC(priority));
  std::string kind = "log.";
  if (facility < kFacilities.size() && !kFacilities[facility].empty())
    kind.append(kFacilities[facility]) += '.';
  return kind.append(kPriorities[static_cast<std::size_t>(LOG_PRI(priority))]);
}

std::string runText(const HostCtl::Lib::Program& program) {
  std::string text = program.path;
  for (const std::string& argument : program.arguments) text += " " + argument;
  return text;
}

std::string auditText(const HostCtl::Lib::AuditRecord& record) {
  std::string text = record.event + " " + record.user + (record.success ? " 1" : " 0");
  for (const auto& [name, value] : record.pairs) text.append(" " + name).append("=" + value);
  return text;
}

}  // namespace HostSample
