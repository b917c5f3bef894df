// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace Kiva {

// What the host remembers of its operators: events, which its management shows, and audit records.
// A host that cannot take one never stops the operation that it reports.

/// Opens the host's event library; returns its status, 0 on success.
int InitEventLibrary();

/// Posts one event, with an id like "evb.user.kiva.login.failed". The plain log line of the same
/// operation is the caller's.
void PostAuditEvent(const std::string& id, const std::string& message);

/// Notes an operation twice, before anything is done: as a line of the log and as an event.
void announceOperation(const std::string& id, const std::string& message);

enum class AuditOutcome { Failure = 0, Success = 1 };
using AuditPairs = std::vector<std::pair<std::string, std::string>>;

inline constexpr const char* kLoginConnect = "login.connect";
inline constexpr const char* kLoginDisconnect = "login.disconnect";

/// Writes one audit record about `user`; `pairs` are name and value.
void writeAuditRecord(const std::string& event, const std::string& user, AuditOutcome outcome,
                      const AuditPairs& pairs = {});

}  // namespace Kiva
