// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "hostctl/network/ip_config.h"
#include "hostctl/network/nic.h"
#include "network/management_interface.h"
#include "network/pending_network.h"

namespace Kiva {

/// The order in which the pending network comes to the host, as a value: everything is decided
/// before anything is changed. applyChanges carries it out.
namespace Apply {

/// What a step does. Most are one call of the host-control library.
struct LogOnly {};
/// A line at error priority: what the host could not tell, where nobody is shown a dialog.
struct LogTrouble {
  std::string text;
};
/// What the host could not tell, where that fails the step.
struct Fail {
  std::string trouble;
};
struct RemoveUplink {
  std::string pnic;
};
struct AddUplink {
  std::string pnic;
};
/// Gives the interface the adapter's address.
struct TakeMacAddress {
  std::string pnic;
  bool onStandardSwitch = true;
};
struct SetVlanId {
  std::int16_t vlanId;
};
/// In force after a restart of the host.
struct SetKernelIpv6 {
  bool enabled;
};
struct SetIpConfig {
  HostCtl::Network::IpConfig config;
};
/// Has the window show what holds now.
struct Repaint {};
struct SetIpv4Gateway {
  HostCtl::Network::Ipv4Address gateway;
};
struct SetIpv6Gateway {
  HostCtl::Network::Ipv6Address gateway;
};
struct RenewLease {
  HostCtl::Network::LeaseRenewal what;
};
struct RestartInterface {};
/// The next six are collected and reach the host with SaveDns.
struct SetHostname {
  std::string name;
};
struct SetFqdn {
  std::string host, domain;
};
struct RemoveNameServers {};
struct AddNameServer {
  HostCtl::Network::IpAddress server;
};
/// Leaves the local domain alone in the search list.
struct ResetSearchDomains {};
struct AddSearchDomain {
  std::string domain;
};
struct SaveDns {};
/// Does not come back where it succeeds.
struct RebootHost {};

using Call =
    std::variant<LogOnly, LogTrouble, Fail, RemoveUplink, AddUplink, TakeMacAddress, SetVlanId,
                 SetKernelIpv6, SetIpConfig, Repaint, SetIpv4Gateway, SetIpv6Gateway, RenewLease,
                 RestartInterface, SetHostname, SetFqdn, RemoveNameServers, AddNameServer,
                 ResetSearchDomains, AddSearchDomain, SaveDns, RebootHost>;

/// What only the pass itself can tell: an earlier step added or removed an uplink, or set the VLAN,
/// or no earlier step with the condition DnsUnbroken failed. A step whose condition does not hold
/// is left out, its log line too.
enum class Condition { Always, AdaptersChanged, VlanChanged, DnsUnbroken };

struct Step {
  Condition when = Condition::Always;
  /// Logged first; empty for none.
  std::string log = {};
  Call call = LogOnly{};
  /// What the log and the operator read before the host's own text; empty where a failure was
  /// logged on the way, and is not shown.
  std::string failure = {};
};

struct Plan {
  std::vector<Step> steps;
  /// The pending value, corrected: only what asks a DHCP server has name servers from one.
  bool dnsFromDhcp = false;
};

}  // namespace Apply

/// What an apply pass compares the pending network with, read before it begins.
struct HostNetwork {
  std::string interface;
  /// What the interface hangs on; absent when the host does not say.
  std::optional<HostCtl::Network::ConnecteeType> connection = {};
  Answer<std::vector<std::string>> uplinks = {};
  Answer<std::int16_t> vlanId = {};
  struct IpConfigs {
    HostCtl::Network::IpConfig configured, running;
  };
  Answer<IpConfigs> ipConfigs = {};
  /// The kernel as it runs.
  Answer<bool> ipv6Enabled = {};
  Answer<HostCtl::Network::Ipv4Address> ipv4Gateway = {};
};

Apply::Plan planApply(const PendingNetwork& pending, const HostNetwork& host);

}  // namespace Kiva
