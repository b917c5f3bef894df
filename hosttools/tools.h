// SPDX-License-Identifier: MIT
#pragma once

#include "hosttools/tool.h"

namespace HostTools {

// Every tool, each defined where its commands are.

extern const Tool<ToolHost> kHmxCmd;
extern const Tool<ToolHost> kHalocli;
extern const Tool<ToolHost> kHalocfgAdvcfg;
extern const Tool<ToolHost> kInitScripts;
extern const Tool<ToolHost> kServicesScript;
extern const Tool<ToolHost> kBackupScript;
extern const Tool<ToolHost> kFirmwareConfig;
extern const Tool<ToolHost> kPowerOffVms;
extern const Tool<ToolHost> kTarnbacktrace;
extern const Tool<ToolHost> kTarnping;

// What a host stands in for where it is no real machine.

extern const Tool<StandInHost> kOpenssl;
extern const Tool<StandInHost> kSshKeygen;
extern const Tool<StandInHost> kOvlcfgVswitch;
extern const Tool<StandInHost> kPoweroff;
extern const Tool<StandInHost> kReboot;
extern const Tool<StandInHost> kShell;

}  // namespace HostTools
