// SPDX-License-Identifier: MIT
#include <array>

#include "hosttools/tools.h"

namespace HostTools {

namespace {

using HostSeam::PowerChange;

template <PowerChange change>
ToolAnswer goDown(StandInHost& host, const Call&) {
  host.GoDown(change);
  return {};
}

constexpr std::array<Command<StandInHost>, 1> kOff = {{
    {"", "shuts the host down", Effect::Changes, goDown<PowerChange::Off>},
}};
constexpr std::array<Command<StandInHost>, 1> kRestart = {{
    {"[-f]", "restarts the host; -f does not stop its services first", Effect::Changes,
     goDown<PowerChange::Restart>},
}};

constexpr std::string_view kAbout =
    "A console that started this tool ends about two seconds later.\n";

}  // namespace

constinit const Tool<StandInHost> kPoweroff = {"/sbin/poweroff", kAbout, 60, kOff};
constinit const Tool<StandInHost> kReboot = {"/sbin/reboot", kAbout, 60, kRestart};

}  // namespace HostTools
