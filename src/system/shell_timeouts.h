// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace Kiva {

/// Whether the services behind a time-out have to be restarted to take it up.
enum class TakenUp { ByRestart, AtNextLogin };

/// A time-out of the host's shells, kept by the host as an option of so many seconds.
struct ShellTimeout {
  const char* option;
  /// As the log names it.
  const char* name;
  TakenUp takenUp;
};

inline constexpr ShellTimeout kShellAvailabilityTimeout{"/UserVars/HaloShellTimeOut",
                                                        "Shell timeout", TakenUp::ByRestart};
inline constexpr ShellTimeout kShellInteractiveTimeout{
    "/UserVars/HaloShellInteractiveTimeOut", "shell interactive timeout", TakenUp::AtNextLogin};

/// Whole minutes; 0 when the host does not tell.
std::int64_t readShellTimeout(const ShellTimeout& timeout);
/// Stores it and has the services take it up. What fails is not reported.
void storeShellTimeout(const ShellTimeout& timeout, std::int64_t minutes);

/// Notes in the log that the time-out called `name` is so many minutes now, 0 for none.
void logTimeout(const char* name, std::int64_t minutes);

}  // namespace Kiva
