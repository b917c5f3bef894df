// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "hostctl/lib/platform.h"

namespace HostSample {

/// The text with every line break written as backslash and n, so that it stays one line.
std::string oneLine(std::string_view text);

/// A line of the journal: the kind, a tab, the text, a line break.
std::string journalLine(std::string_view kind, std::string_view text);

/// The kind of a system-log line: "log.info", or "log.auth.err" where the facility is not user.
std::string logKind(int priority);

/// The texts of the other kinds.
std::string runText(const HostCtl::Lib::Program& program);
std::string auditText(const HostCtl::Lib::AuditRecord& record);

}  // namespace HostSample
