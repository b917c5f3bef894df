// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostctl/network/distributed_switch.h"
#include "hostctl/network/ip_config.h"

namespace HostCtl::Network {

/// What a kernel interface is connected to.
enum class ConnecteeType { Unknown = 0, StandardPortGroup = 1, DistributedPort = 2, Opaque = 3 };

/// Where a kernel interface is plugged in. Names are empty where the type has none.
struct ConnectionPoint {
  ConnecteeType type = ConnecteeType::Unknown;
  std::string switchName;
  std::string portGroup;
  bool operator==(const ConnectionPoint&) const = default;
};

/// The state of a physical network adapter. Speed is in Mbit/s, 0 when unknown. The MAC address is
/// the adapter's own, whatever it uses at the moment.
struct PnicRecord {
  std::string name;
  std::string description;
  std::string driver;
  std::string macAddress;
  bool linkUp = false;
  int speed = 0;
  std::string switchName;
  bool operator==(const PnicRecord&) const = default;
};

/// A physical network adapter, known by its name alone until Refresh reads it. Throws
/// HostCtlException when the host fails, or has no such adapter.
class Pnic {
 public:
  virtual ~Pnic() = default;
  virtual void Refresh() = 0;
  virtual const PnicRecord& GetRecord() const = 0;
};

/// Which leases a renewal is about.
enum class LeaseRenewal { Ipv4, Ipv4AndIpv6 };

/// A kernel network interface that carries traffic of the host itself. Whoever asks the network
/// information for one owns it; its state is the one at that moment until Refresh. Changes block
/// until they are in force, except that nobody waits for a lease. Everything throws
/// HostCtlException when the host fails it.
class TarnNic {
 public:
  virtual ~TarnNic() = default;
  virtual std::string GetInterfaceName() const = 0;
  /// True when the state was read more than a second ago.
  virtual bool IsStale() const = 0;
  /// Reads the state again; an interface that is gone keeps the last one.
  virtual void Refresh() = 0;
  virtual IpConfig GetConfiguredIpConfig() const = 0;
  /// The configuration that is in force now, addresses given by others included.
  virtual IpConfig GetIpConfig() const = 0;
  virtual ConnectionPoint GetConnectionPoint() const = 0;
  /// The one that it uses; empty when unknown.
  virtual std::string GetMacAddress() const = 0;

  /// Everything but the gateways, which belong to the routing information. Nothing is touched where
  /// the host is configured so already.
  virtual void SetIpConfig(const IpConfig& config) = 0;
  virtual void RenewLease(LeaseRenewal what) = 0;
  /// Gives a DHCP lease back; nothing for an interface that has none.
  virtual void ReleaseLease() = 0;
  virtual void Disable() = 0;
  virtual void Enable() = 0;
  /// ReleaseLease, Disable, Enable; the last also when one of the others fails, and then throws.
  virtual void Restart() = 0;
  /// The adapter's own MAC address for an interface on a standard switch.
  virtual void SetMacAddressFromPnic(const Pnic* pnic) = 0;
  /// The same for an interface of another kind; six numbers ("9e:3e:41:07:21:a8").
  virtual void SetMacAddress(const std::string& macAddress) = 0;

  /// Moves the interface, with its addresses, to a port group of a standard switch.
  virtual void Migrate(const std::string& switchName, const std::string& portGroup) = 0;
  /// Makes the port on the distributed switch that the interface is on and moves it there; its old
  /// port goes.
  virtual void MoveToHostLocalPort(const HostLocalPort& port) = 0;
};

}  // namespace HostCtl::Network
