// SPDX-License-Identifier: MIT
#include "ui/en_us_texts.h"

namespace Kiva {

namespace {

using enum TextId;

// The management network: its settings, its restart and its test: 35 to 61, 75 to 135, 139 to 141,
// 211 to 224, 256 to 264.
constexpr CatalogueText kNetworkTexts[] = {
    {kIPv4Address, "IPv4 Address"},
    {kIPv6Addresses, "IPv6 Addresses"},
    {kAttributedAddresses, "Attributed addresses"},
    {kDefaultGateway, "Default Gateway"},
    {kSubnetMask, "Subnet Mask"},
    {kHostname, "Hostname"},
    {kPrimaryDnsServer, "Primary DNS Server"},
    {kAlternateDnsServer, "Alternate DNS Server"},
    {kIPv6DnsServer, "IPv6 DNS Server"},
    {kConfigureManagementNetworkTitle, "Configure Management Network"},
    {kNetworkAdapters, "Network Adapters"},
    {kVlanOptional, "VLAN (optional)"},
    {kIPv4Configuration, "IPv4 Configuration"},
    {kIPv6Configuration, "IPv6 Configuration"},
    {kIPv6IsEnabled, "IPv6 is enabled."},
    {kIPv6IsDisabled, "IPv6 is disabled."},
    {kDnsConfiguration, "DNS Configuration"},
    {kCustomDnsSuffixes, "Custom DNS Suffixes"},
    {kAdaptersListedHere,
     "The adapters listed here provide the default network connection to and from this host. When "
     "two or more adapters are used, connections will be fault-tolerant and outgoing traffic will "
     "be load-balanced."},
    {kAVlanIsAVirtualNetwork,
     "A VLAN is a virtual network within a physical network. Because several VLANs can co-exist on "
     "the same physical network segment, VLAN configuration and numbering must match the settings "
     "of the physical switches.\n\nIf you are unsure how to configure or use a VLAN, it is safe to "
     "leave this option unset."},
    {kHostCanObtainIPv4Address,
     "This host can obtain an IPv4 address and other networking parameters automatically if your "
     "network includes a DHCP server. If not, ask your network administrator for the appropriate "
     "settings."},
    {kHostCanObtainIPv6Addresses,
     "This host can obtain IPv6 addresses and other networking parameters automatically if your "
     "network includes a DHCPv6 server or supports Router Advertisement."},
    {kHostCanSupportIPv6,
     "This host can be configured to support IPv6. A restart of the host will be required to "
     "enable or disable IPv6."},
    {kIPv6EnabledAfterNextReboot, "The support for IPv6 will be enabled after the next reboot."},
    {kDnsObtainedAutomatically,
     "If this host is configured using DHCP, DNS server addresses and other DNS parameters can be "
     "obtained automatically. If not, ask your network administrator for the appropriate "
     "settings."},
    {kDnsQueriesAppendSuffixes,
     "When using short, unqualified names, DNS queries will attempt to locate the specified host "
     "by appending the suffixes listed here in the order shown until a match is found or the list "
     "ends."},
    {kNetworkConfigurationError, "Network Configuration Error"},
    {kNetworkAdaptersTitle, "Network Adapters"},
    {kSelectAdapters,
     "Select the adapters for this host's default management network connection. Use two or more "
     "adapters for fault-tolerance and load-balancing."},
    {kNetworkAdaptersWarning, "Network Adapters: Warning"},
    {kSelectedAdaptersAreUsed,
     "One or more of the selected adapters are already used for other connections."},
    {kRemoveAdaptersFromConnections, "Remove these adapters from their current connections?"},
    {kInvalidIpAddress, "Invalid IP address"},
    {kReenterIPv4Address, "Please reenter a valid IPv4 address (x.x.x.x)."},
    {kReenterIPv6Network, "Please reenter a valid IPv6 network address (x:x:x/x)."},
    {kInvalidIpOrIPv6Address, "Invalid IP or IPv6 address."},
    {kInvalidSubnet, "Invalid subnet"},
    {kReenterSubnet, "Please reenter a valid subnet (x.x.x.x)."},
    {kInvalidScope, "Invalid scope"},
    {kCannotAddLinkLocalAddress, "Cannot add a link-local address as static address."},
    {kInvalidGatewayAddress, "Invalid gateway address"},
    {kReenterGatewayAddress, "Please reenter a valid gateway address (x.x.x.x)."},
    {kReenterIPv6GatewayAddress, "Please reenter a valid IPv6 gateway address (x:x:x)."},
    {kLinkLocalGatewayNotSupported, "Link-local addresses are not supported as default gateway."},
    {kInvalidDnsServerAddress, "Invalid DNS server address"},
    {kReenterDnsServerAddress, "Please reenter a valid DNS server address (IP or IPv6)."},
    {kInvalidVlanId, "Invalid VLAN ID"},
    {kReenterVlanId, "Please reenter a valid VLAN ID (1-4095)."},
    {kYouEnteredVlanId4095,
     "You entered a VLAN ID of 4095. This host will receive all VLAN-tagged frames and be able to "
     "send any VLAN-tagged frame.\n\nUnless this is specifically intended, it is best not to "
     "configure a VLAN ID of 4095."},
    {kSafeToLeaveVlanUnset,
     "If you are unsure how to configure or use a VLAN, it is safe to leave this option unset."},
    {kVlanIdLabel, "VLAN ID (1-4094, or 4095 to access all VLANs):"},
    {kIPv4ConfigurationTitle, "IPv4 Configuration"},
    {kHostCanObtainSettingsByDhcp,
     "This host can obtain network settings automatically if your network includes a DHCP server. "
     "If it does not, the following settings must be specified:"},
    {kDisableIPv4Configuration, "Disable IPv4 configuration for management network"},
    {kUseDynamicIPv4Address, "Use dynamic IPv4 address and network configuration"},
    {kSetStaticIPv4Address, "Set static IPv4 address and network configuration:"},
    {kIPv6ConfigurationTitle, "IPv6 Configuration"},
    {kHostCanObtainSettingsBySlaac,
     "This host can obtain network settings automatically if your network supports Stateless "
     "Address Autoconfiguration (SLAAC) or includes a DHCPv6 server. If it does not, static "
     "settings must be specified:"},
    {kDisableIPv6, "Disable IPv6 (restart required)"},
    {kUseDynamicIPv6Address, "Use dynamic IPv6 address and network configuration"},
    {kUseDhcpv6, "Use DHCPv6"},
    {kSetStaticIPv6Address, "Set static IPv6 address and network configuration"},
    {kStaticAddress, "Static address"},
    {kDefaultGatewayLabel, "Default gateway"},
    {kWarning, "Warning"},
    {kNoAdapter, "No adapter"},
    {kAutomatic, "Automatic"},
    {kNone, "None"},
    {kManual, "Manual"},
    {kSet, "Set"},
    {kNotSet, "Not set"},
    {kEnabled, "Enabled"},
    {kDisabled, "Disabled"},
    {kDone, "Done."},
    {kDnsConfigurationTitle, "DNS Configuration"},
    {kDnsAutomaticOnlyWithIpAutomatic,
     "This host can only obtain DNS settings automatically if it also obtains its IP configuration "
     "automatically."},
    {kObtainDnsAutomatically, "Obtain DNS server addresses and a hostname automatically"},
    {kUseFollowingDns, "Use the following DNS server addresses and hostname:"},
    {kDnsQueriesAppendSpecifiedSuffixes,
     "DNS queries will attempt to locate hosts by appending the suffixes specified here to short, "
     "unqualified names.\n\nUse spaces or commas to separate multiple entries."},
    {kSuffixesLabel, "Suffixes:"},
    {kRestartManagementNetworkConfirm, "Restart Management Network: Confirm"},
    {kRestartingResultsInOutage,
     "Restarting the management network will result in a brief network outage. It may disconnect "
     "remote management software and affect running virtual machines."},
    {kRestartManagementNetworkNow, "Restart management network now?"},
    {kRestartManagementNetworkTitle, "Restart Management Network"},
    {kPleaseWaitNetworkRestarts, "Please wait while the management network restarts."},
    {kStoppingManagementNetwork, "Stopping management network."},
    {kStartingManagementNetwork, "Starting management network."},
    {kIpAddressIs, "IP address is "},
    {kToManageThisHostGoTo, "To manage this host, go to:"},
    {kWarningDhcpLookupFailed,
     "Warning: DHCP lookup failed. You may be unable to access this system until you customize its "
     "network configuration."},
    {kWarningAuditMode,
     "Warning: Host is running in audit mode. Your configuration will not be persistent across "
     "reboots. Please contact support."},
    {kConfigureManagementNetworkConfirm, "Configure Management Network: Confirm"},
    {kYouHaveMadeNetworkChanges,
     "You have made changes to the host's management network.\nApplying these changes may result "
     "in a brief network outage, disconnect remote management software and affect running virtual "
     "machines. In case IPv6 has been enabled or disabled this will restart your host."},
    {kApplyChangesAndRestartNetwork, "Apply changes and restart management network?"},
    {kApplyChangesAndRebootHost, "Apply changes and reboot host?"},
    {kTestManagementNetworkTitle, "Test Management Network"},
    {kNetworkTestByDefault,
     "By default, this test will attempt to ping your default gateway and DNS servers, and resolve "
     "your hostname."},
    {kPingAddress, "Ping Address"},
    {kResolveHostname, "Resolve Hostname"},
    {kTestingManagementNetwork, "Testing Management Network"},
    {kYouMayInterruptTheTest, "You may interrupt the test at any time."},
    {kPingingAddress, "Pinging address"},
    {kResolvingHostname, "Resolving hostname"},
    {kFailed, "Failed."},
    {kOk, "OK."},
    {kEnableIPv6RestartRequired, "Enable IPv6: Restart Required"},
    {kRestartBeforeIPv6Enabled, "This host must be restarted before IPv6 will be enabled."},
    {kDisableIPv6RestartRequired, "Disable IPv6: Restart Required"},
    {kRestartBeforeIPv6Disabled, "This host must be restarted before IPv6 will be disabled."},
    {kRouterAdvertised, "Router advertised"},
    {kDhcp, "DHCP"},
    {kStatic, "STATIC"},
    {kAutoconf, "AUTOCONF"},
    {kWaitingForDhcp, "Waiting for DHCP..."},
};

}  // namespace

std::span<const CatalogueText> enUsNetworkTexts() {
  return kNetworkTexts;
}

}  // namespace Kiva
