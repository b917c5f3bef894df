// SPDX-License-Identifier: MIT
#include "ui/en_us_texts.h"

namespace Kiva {

namespace {

using enum TextId;

// The menu, its right pane and the welcome screen's footer: 0 to 34.
constexpr CatalogueText kMenuTexts[] = {
    {kCustomizeSystemViewLogs, "Customize System/View Logs"},
    {kShutDownRestartFooter, "Shut Down/Restart"},
    {kEmpty, ""},
    {kSystemCustomization, "System Customization"},
    {kConfigurePassword, "Configure Password"},
    {kConfigureLockdownMode, "Configure Lockdown Mode"},
    {kConfigureManagementNetwork, "Configure Management Network"},
    {kRestartManagementNetwork, "Restart Management Network"},
    {kTestManagementNetwork, "Test Management Network"},
    {kNetworkRestoreOptions, "Network Restore Options"},
    {kViewSupportInformation, "View Support Information"},
    {kViewSystemLogs, "View System Logs"},
    {kTroubleshootingOptions, "Troubleshooting Options"},
    {kResetSystemConfiguration, "Reset System Configuration"},
    {kConfigureKeyboard, "Configure Keyboard"},
    {kRestartManagementNetworkError, "Restart Management Network: Error"},
    {kEnableManagementNetworkError, "Enable Management Network: Error"},
    {kDisableManagementNetworkError, "Disable Management Network: Error"},
    {kManagementNetworkInterfaceNotFound, "Management network interface cannot be found."},
    {kManagementNetworkOperationFailed, "Operation on the management network interface failed."},
    {kToPreventUnauthorizedAccessSetPassword,
     "To prevent unauthorized access to this system, set the password for the user."},
    {kLockdownModeAndAccess,
     "When enabled, lockdown mode prevents users from logging directly into this host. The host "
     "will only be accessible through this local console or an authorized account on its list of "
     "exceptions."},
    {kToViewOrModifyManagementNetwork,
     "To view or modify this host's management network settings in detail, press <Enter>."},
    {kRestartingMayBeRequired,
     "Restarting the management network interface may be required to restore networking or to "
     "renew a DHCP lease.\n\nRestarting the management network will result in a brief network "
     "outage. It may disconnect remote management software and affect running virtual machines."},
    {kToPerformBriefNetworkTest,
     "To perform a brief network test, press <Enter>.\n\nBy default, this test will attempt to "
     "ping the configured default gateway, ping the configured primary and alternate DNS servers, "
     "and resolve the configured hostname."},
    {kToViewNetworkRestoreOptions,
     "To view various network restore options like full network restore, move Management network "
     "from misconfigured xDS to standard switch or correct misconfigured xDS Management network "
     "port, press <Enter>."},
    {kPressKeyToViewLog,
     "Press the corresponding key to view a log.\nPress <Q> to return to this screen."},
    {kToViewTroubleshootingOptions,
     "To view various troubleshooting mode options like Enable Halo Shell, Enable SSH and Restart "
     "Agents."},
    {kAllSystemParametersWillBeReverted,
     "Warning!\n\nAll system parameters will be reverted to their software defaults, including any "
     "parameters customized by the hardware manufacturer. The root password will be kept.\n\nThis "
     "operation restarts the host and does not wait for running virtual machines. It is "
     "recommended to previously shut down or migrate them."},
    {kAllCustomExtensionsWillBeRemoved,
     "Warning!\n\nAll custom extensions will be removed.\n\nThis operation requires a restart of "
     "the host. It is recommended to previously shut down or migrate all running virtual "
     "machines."},
    {kNetworkIdentityAcquiredFromDhcp, "Network identity acquired from DHCP server"},
    {kToSelectKeyboardLayout,
     "To select the layout type for the keyboard of this host, press <Enter>."},
    {kChangeDefaultPassword, "Change default password to prevent unauthorized access"},
    {kUnknown, "Unknown"},
};

}  // namespace

std::span<const CatalogueText> enUsMenuTexts() {
  return kMenuTexts;
}

}  // namespace Kiva
