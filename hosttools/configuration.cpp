// SPDX-License-Identifier: MIT
#include <array>

#include "hosttools/tools.h"

namespace HostTools {

namespace {

constexpr std::array<Command<ToolHost>, 1> kSave = {{
    {"0", "saves the host's configuration (on Linux to /var/lib/corvo/backup); the last ten stay",
     Effect::Changes,
     [](ToolHost& host, const Call&) {
       return ToolAnswer{0, "saved " + host.SaveConfiguration() + "\n", ""};
     }},
}};

constexpr std::array<Command<ToolHost>, 1> kReset = {{
    {"--reset-only",
     "saves the configuration and puts back the one delivered; on Linux that waits for the next "
     "start",
     Effect::Changes,
     [](ToolHost& host, const Call&) {
       host.ResetConfiguration();
       return ToolAnswer{};
     }},
}};

}  // namespace

constinit const Tool<ToolHost> kBackupScript = {
    "/sbin/backup.sh", "Keeps the host's configuration safe.\n", 120, kSave};

constinit const Tool<ToolHost> kFirmwareConfig = {
    "/sbin/firmwareConfig.py", "Takes the host back to how it was delivered.\n", 180, kReset};

}  // namespace HostTools
