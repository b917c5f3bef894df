// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace HostCtl::Network {

/// A port of a distributed switch on this host. VLAN 0 is none. One that does not say which
/// `uplinks` it uses uses all of the switch's.
struct DistributedPort {
  std::string name;
  /// The kernel interface on it; empty where there is none.
  std::string nic;
  std::int16_t vlanId = 0;
  bool blocked = false;
  std::optional<std::vector<std::string>> uplinks;
  bool operator==(const DistributedPort&) const = default;
};

/// What a new port is to be that this host makes itself, without the switch's controller. Its VLAN
/// is 1 to 4094; one that is not unblocked is as blocked as the port that it replaces. `uplinks`
/// are of the switch; none is a port without a way out.
struct HostLocalPort {
  std::string name;
  std::int16_t vlanId = 0;
  bool unblocked = true;
  std::vector<std::string> uplinks;
};

/// A switch whose configuration a controller elsewhere spreads over hosts, as far as this host has
/// part in it. It is as it was when it was asked for. Throws HostCtlException when the host fails.
class DistributedSwitch {
 public:
  virtual ~DistributedSwitch() = default;
  virtual std::string GetName() const = 0;
  /// True for one that somebody else's software manages.
  virtual bool IsThirdParty() const = 0;
  /// The physical adapters on this host, in natural order.
  virtual std::vector<std::string> GetUplinks() const = 0;
  virtual std::vector<DistributedPort> GetPorts() const = 0;
  /// Gives the switch back an adapter that nobody else uses.
  virtual void AddUplink(const std::string& pnic) = 0;
  virtual void RemoveUplink(const std::string& pnic) = 0;
};

}  // namespace HostCtl::Network
