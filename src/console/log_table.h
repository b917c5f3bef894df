// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <optional>

namespace Kiva {

/// A system log that an operator can read from the menu.
struct SystemLog {
  const char* title;
  const char* file;
};

inline constexpr std::array<SystemLog, 7> kSystemLogs{{
    {"Syslog", "/var/log/syslog.log"},
    {"Tarn", "/var/log/tarn.log"},
    {"Config", "/var/log/sysboot.log"},
    {"Management Agent (mgmtd)", "/var/log/mgmtd.log"},
    {"Lumen Agent (lmxa)", "/var/log/lmxa.log"},
    {"High Availibility Agent (aam)", "/var/log/aam.log"},
    {"Corvo Halo Observation log (evbd)", "/var/log/evbd.log"},
}};

/// Which of the logs exist, in the table's order.
using LogFlags = std::array<bool, kSystemLogs.size()>;

LogFlags availableLogs();

/// The log that a digit opens while those marked are on offer: the available logs are counted in
/// the table's order, and the row at which the count equals the digit is taken, else the one behind
/// the last counted; none when all are available and the digit is beyond them.
std::optional<std::size_t> logForDigit(int digit, const LogFlags& available);

}  // namespace Kiva
