// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace HostLinux {

/// What the module kiva-machines.so does, so that no program links libvirt: its functions,
/// found by these names. All may wait for ever on a daemon that hangs.

/// The connection is null where no daemon runs; then, if something else is wrong, `error` says it.
struct OpenedMachines {
  void* connection = nullptr;
  std::string error;
};

inline constexpr const char* kOpenMachinesSymbol = "kivaOpenMachines";
using OpenMachinesFunction = void (*)(const std::string& uri, OpenedMachines& opened);

/// Machines that run, or why nobody knows. Closes the connection too.
struct CountedMachines {
  int running = 0;
  std::string error;
};

inline constexpr const char* kCountMachinesSymbol = "kivaCountMachines";
using CountMachinesFunction = void (*)(void* connection, CountedMachines& counted);

enum class StopManner { AskInTurn, AskTogether, Destroy };

/// AskInTurn is for the machines that autostart manages, the others for all that run.
struct MachineStopRequest {
  StopManner manner = StopManner::AskInTurn;
  std::vector<std::string> order;
  std::chrono::milliseconds within{};
};

/// The names in the order in which the machines were asked.
struct StoppedMachines {
  std::vector<std::string> stopped;
  std::vector<std::string> left;
  std::string error;
};

/// Closes the connection too.
inline constexpr const char* kStopMachinesSymbol = "kivaStopMachines";
using StopMachinesFunction = void (*)(void* connection, const MachineStopRequest& request,
                                      StoppedMachines& stopped);

}  // namespace HostLinux
