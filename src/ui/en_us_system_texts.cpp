// SPDX-License-Identifier: MIT
#include "ui/en_us_texts.h"

namespace Kiva {

namespace {

using enum TextId;

// Login, passwords, power, reset, troubleshooting and time-outs: 142 to 188, 225 to 255, 265 to
// 276.
constexpr CatalogueText kSystemTexts[] = {
    {kAuthenticationRequired, "Authentication Required"},
    {kEnterLoginNameAndPassword, "Enter an authorized login name and password for "},
    {kEnterSmartCardPin, "Enter the smart card login PIN for "},
    {kAuthenticationDenied, "Authentication Denied"},
    {kDirectConsoleAccessDisabled,
     "Direct console access has been disabled by the administrator for "},
    {kLoginNameLabel, "Login Name:"},
    {kLoginIdLabel, "Login Id:"},
    {kPasswordLabel, "Password:"},
    {kPinLabel, "PIN:"},
    {kAuthenticationFailed, "Authentication failed"},
    {kInvalidLoginOrPassword, "Invalid login or password."},
    {kUserHasNoPermission, "User does not have permission to login to KIVA."},
    {kPasswordHasExpired,
     "Password has expired.\nYou will be prompted to set a new password and then login again."},
    {kConfigurePasswordTitle, "Configure Password"},
    {kSettingPasswordPreventsAccess,
     "Setting the password will prevent unauthorized access to this host."},
    {kOldPasswordLabel, "Old Password:"},
    {kNewPasswordLabel, "New Password:"},
    {kConfirmPasswordLabel, "Confirm Password:"},
    {kConfigurePasswordError, "Configure Password: Error"},
    {kConfigurePasswordWarning, "Configure Password: Warning"},
    {kOldPasswordIncorrect, "The old password you entered is incorrect"},
    {kNewPasswordsDoNotMatch, "The new password and the confirmed password do not match."},
    {kEmptyPasswordsNotAllowed, "Empty passwords are not allowed."},
    {kNewPasswordSameAsOld, "New password is same as old password. Are you sure?"},
    {kPasswordChangeFailed,
     "The password change operation failed.\nPlease ensure that your password meets the complexity "
     "criteria set by the system."},
    {kErrorStoringUserAccount,
     "Error while storing user account information to persistent storage. The new information may "
     "not be available after reboot."},
    {kShutDownRestart, "Shut Down/Restart"},
    {kRemoteSoftwareRecommendedToShutDown,
     "Remote management software is recommended to safely shut down or restart this host.\n\nBy "
     "default, running virtual machines will be powered off, suspended, or shut down according to "
     "the current system shutdown policy.\nIf this host is part of an HA cluster, then HA will not "
     "restart these VMs unless they are forcefully terminated."},
    {kForcefullyTerminateVms, "Forcefully terminate running VMs, if any ..."},
    {kShutDownHost, "Shut Down Host"},
    {kShutdownInProgress, "Shutdown in progress..."},
    {kWarningVmsRunning, "Warning: VMs running on the host"},
    {kHostHasVmsRunning,
     "Host has VMs running. Are you sure you want to shutdown/restart the host or restore the "
     "network."},
    {kRestartHost, "Restart Host"},
    {kRestartInProgress, "Restart in progress..."},
    {kResetSystemConfigurationConfirm, "Reset System Configuration: Confirm"},
    {kWarningAllParametersWillBeReverted,
     "Warning! All system parameters will be reverted to their software defaults, and host "
     "configuration will be lost."},
    {kResetSystemConfigurationNow, "Reset System Configuration now?"},
    {kResetSystemConfigurationTitle, "Reset System Configuration"},
    {kPleaseWaitDefaultsRestored, "Please wait while the default settings are restored."},
    {kDefaultSettingsAreRestored,
     "Default settings are restored. Press <Enter> to restart your host."},
    {kRemoveCustomExtensionsConfirm, "Remove Custom Extensions: Confirm"},
    {kWarningCustomExtensionsRemoved, "Warning! All custom extensions will be removed."},
    {kRemoveCustomExtensionsNow, "Remove custom extensions now?"},
    {kRemoveCustomExtensions, "Remove Custom Extensions"},
    {kPleaseWaitExtensionsRemoved, "Please wait while the custom extensions are removed."},
    {kCustomExtensionsHaveBeenRemoved,
     "Custom extensions have been removed. Press <Enter> to restart your host."},
    {kTroubleshootingModeOptions, "Troubleshooting Mode Options"},
    {kEnableHaloShell, "Enable Halo Shell"},
    {kDisableHaloShell, "Disable Halo Shell"},
    {kEnableSsh, "Enable SSH"},
    {kDisableSsh, "Disable SSH"},
    {kHaloShell, "Halo Shell"},
    {kSshSupport, "SSH Support"},
    {kModifyShellTimeouts, "Modify Halo Shell and SSH timeouts"},
    {kModifyKivaIdleTimeout, "Modify KIVA idle timeout"},
    {kRestartManagementAgents, "Restart Management Agents"},
    {kChangeHaloShellState, "Change current state of the Halo Shell"},
    {kChangeSshState, "Change current state of SSH"},
    {kHaloShellIsEnabled, "Halo Shell is Enabled"},
    {kHaloShellIsDisabled, "Halo Shell is Disabled"},
    {kSshIsEnabled, "SSH is Enabled"},
    {kSshIsDisabled, "SSH is Disabled"},
    {kManagementAgentsAre,
     "The management agents are the programs that allow remote management software to monitor and "
     "control this host.\n\nRestarting the management agents will disconnect all remote management "
     "software and will affect all running services."},
    {kModifyShellTimeoutMinutes,
     "Modify the number of minutes that can elapse before you must log in after Halo Shell access "
     "is enabled and the idle timeout for interactive sessions."},
    {kModifyKivaIdleMinutes,
     "Modify the number of idle minutes that can elapse before you must log in again in KIVA."},
    {kRestartManagementAgentsConfirm, "Restart Management Agents: Confirm"},
    {kWarningRestartingAgentsDisconnects,
     "{color:red}Warning! Restarting the management agents will disconnect all remote management "
     "software. This will affect all running services.\nCollection of extra troubleshooting "
     "information can take a noticeable amount of time.{/color}"},
    {kRestartManagementAgentsNow, "Restart management agents now?"},
    {kStoppingManagementAgents, "Stopping management agents."},
    {kStartingManagementAgents, "Starting management agents."},
    {kCollectTroubleshootingInformation, "Collect extra troubleshooting information"},
    {kCollectingLiveCore, "Collecting host agent live core information."},
    {kPleaseWait, "Please, wait ..."},
    {kConfigureLockdownModeTitle, "Configure Lockdown Mode"},
    {kLockdownModePreventsLogin,
     "When enabled, lockdown mode prevents users from logging directly into this host."},
    {kEnableLockdownMode, "Enable lockdown mode"},
    {kIfDifficultyUsingKeyboard,
     "If you are having difficulty using your keyboard, choose a layout that matches your keyboard "
     "from the options below."},
    {kSetShellTimeouts, "Set the timeouts for Halo Shell access (local and remote)"},
    {kSetShellTimeoutMinutes,
     "Set the number of minutes that can elapse before you must log in after Halo Shell is enabled "
     "(the availability timeout) and the timeout for idle interactive sessions.\n\nAfter the "
     "availability timeout expires any running shell instances will remain, but new sessions will "
     "not be allowed.  Changes to idle timeout will apply on next login, but will not affect any "
     "existing sessions.\n\nValues are in minutes. Use zero to disable timeouts. Maximum value is "
     "1440 minutes."},
    {kAvailabilityTimeout, "Availability timeout"},
    {kIdleTimeout, "Idle timeout"},
    {kInvalidTimeoutValue, "Invalid timeout value"},
    {kTimeoutMustBeBetween, "Timeout value must be between 0 (disabled) and 1440 minutes"},
    {kSetKivaIdleTimeout, "Set idle timeout for KIVA access"},
    {kSetKivaIdleMinutes,
     "Set the number of idle minutes that can elapse before you must log in again in "
     "KIVA.\n\nValue is in minutes. Use zero to disable the timeout. Maximum value is 1440 "
     "minutes."},
    {kKivaIdleTimeout, "KIVA idle timeout"},
    {kOperationFailed, "Operation Failed"},
    {kOperationSucceeded, "Operation Succeeded"},
    {kOperationCancelled, "Operation Cancelled"},
};

}  // namespace

std::span<const CatalogueText> enUsSystemTexts() {
  return kSystemTexts;
}

}  // namespace Kiva
