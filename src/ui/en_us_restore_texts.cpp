// SPDX-License-Identifier: MIT
#include "ui/en_us_texts.h"

namespace Kiva {

namespace {

using enum TextId;

// The network restore options: 62 to 74, 136 to 138, 189 to 210, 277 to 289.
constexpr CatalogueText kRestoreTexts[] = {
    {kNetworkRestoreOptionsTitle, "Network Restore Options"},
    {kCreateStandardSwitch, "Create Standard Switch"},
    {kCreatePortGroup, "Create Port Group"},
    {kMigrateTarnNicToStandardSwitch, "Migrate Tarn NIC to Standard Switch"},
    {kRestoreNetworkSettings, "Restore Network Settings"},
    {kRestoreStandardSwitch, "Restore Standard Switch"},
    {kRestoreXds, "Restore xDS"},
    {kCreateStandardSwitchByName,
     "Create a new standard virtual switch by name and an uplink to be added."},
    {kCreatePortGroupByName,
     "Create a new port group by name and standard virtual switch to which the port group should "
     "be added."},
    {kMigrateTarnnicToChosenPortgroup,
     "Migrate a tarnnic to the standard virtual switch of a chosen portgroup."},
    {kRestoringNetworkSettingsReverts,
     "Restoring the network settings will revert all network configuration and will automatically "
     "configure the network with defaults.\n\nRestoring the network settings will power off all "
     "running virtual machines and may disconnect remote management software."},
    {kManagementNetworkOntoNewVSwitch,
     "All management network and associated uplinks can be moved onto a new vSwitch in order to "
     "restore network connectivity to Orvane. All interfaces apart from the management network "
     "stay where they are."},
    {kReconfigureXdsManagementPort,
     "Reconfigure properties of misconfigured xDS Management network port.\n\nA new xDS host local "
     "port will be created with the reconfigured properties and the management network will be "
     "moved to it."},
    {kRestoreStandardSwitchTitle, "Restore Standard Switch"},
    {kMoveManagementNetworkOntoNewVSwitch,
     "All management network and associated uplinks can be moved onto a new vSwitch in order to "
     "restore network connectivity to Orvane."},
    {kMoveManagementNetworkNow, "Move the management network onto a standard switch?"},
    {kRestoreNetworkFactorySettings, "Restore Network Factory Settings"},
    {kWillResetHostNetwork,
     "This option will reset the host network configuration to its default setting."},
    {kResetHostNetworkNow, "Are you sure you want to reset the host network configuration?"},
    {kRestoreDefaultBlockedSetting, "Restore to default blocked setting (unblocked) "},
    {kSelectXdsUplinks, "Select xDS uplinks"},
    {kEnterValidVlanId, "Please enter a valid VLAN ID (1-4094)."},
    {kRestoreXdsTitle, "Restore xDS"},
    {kEnterXdsPortProperties,
     "Enter the properties for new xDS host local port that will be created.\nAll other properties "
     "will be taken as default."},
    {kRestoreXdsError, "Restore xDS: Error"},
    {kUnableToRestoreXds, "Unable to restore xDS. Check logs for details."},
    {kUnableToRestoreThirdPartyXds,
     "Unable to restore xDS. Restore xDS operation cannot be performed on 3rd party xDS."},
    {kXdsUplinks, "xDS Uplinks"},
    {kSelectXdsUplinksToUse,
     "Select the xDS Uplinks (one or more) to be used by management tarnnic"},
    {kXdsUplinksWarning, "xDS Uplinks: Warning"},
    {kNoUplinksWereSelected, "No uplinks were selected."},
    {kDoYouWantToContinue, "Do you want to continue?"},
    {kNoXdsUplinksError, "No xDS Uplinks: Error"},
    {kNoUplinksConfigured, "No uplinks are configured on the host for this xDS."},
    {kRestoreNetworkSettingsTitle, "Restore Network Settings"},
    {kPleaseWaitFactoryNetworkRestored,
     "Please wait while the factory network settings are restored."},
    {kPoweringOffVms, "Powering Off VMs."},
    {kAutoConfiguringNetwork, "Auto-configuring network."},
    {kEnterPortGroupProperties,
     "Enter the properties for the new port group that will be created.\nAll other properties will "
     "be taken as default."},
    {kPleaseCheckSyslog, "Please check the syslog for more information."},
    {kInvalidArgument, "Invalid Argument"},
    {kEnterValidPortGroupName, "Please enter a valid port group name."},
    {kStandardSwitchDetails, "Standard Switch Details"},
    {kSwitchNameLabel, "Switch Name: "},
    {kSuccessfullyCreatedPortgroup, "Successfully created portgroup: "},
    {kPortgroupNameLabel, "Portgroup Name: "},
    {kUplinkIsAlreadyInUse, "Uplink is already in use"},
    {kEnterValidStandardSwitchName, "Please enter a valid standard switch name."},
    {kSuccessfullyCreatedStandardSwitch, "Successfully created standard virtual switch: "},
    {kEnterVSwitchProperties,
     "Enter the properties for new standard vSwitch that will be created.\nAll other properties "
     "will be taken as default."},
    {kChooseTarnNicToMigrate,
     "Please choose which Tarn NIC should be migrated to which portgroup/switch."},
};

}  // namespace

std::span<const CatalogueText> enUsRestoreTexts() {
  return kRestoreTexts;
}

}  // namespace Kiva
