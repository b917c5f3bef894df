// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace HostCtl::Network {

/// Which adapters carry a port group's traffic: the active ones are the first of the order, as many
/// as may be active; the first of all is the primary.
class NicTeamingPolicy {
 public:
  explicit NicTeamingPolicy(std::vector<std::string> uplinkOrder = {})
      : order_(std::move(uplinkOrder)), maxActive_(static_cast<int>(order_.size())) {}

  const std::vector<std::string>& GetUplinkOrder() const { return order_; }
  int GetMaxActiveUplinks() const { return maxActive_; }
  void SetMaxActiveUplinks(int number) { maxActive_ = number; }
  std::vector<std::string> GetActiveUplinks() const;

 private:
  std::vector<std::string> order_;
  int maxActive_;
};

/// A group of ports of a standard switch that share a VLAN and a teaming policy. VLAN 0 is none,
/// 4095 all of them. Throws HostCtlException when the host fails.
class PortGroup {
 public:
  virtual ~PortGroup() = default;
  virtual std::string GetName() const = 0;
  virtual std::int16_t GetVlanId() const = 0;
  virtual void SetVlanId(std::int16_t vlanId) = 0;
  virtual NicTeamingPolicy GetNicTeamingPolicy() const = 0;
  virtual void SetNicTeamingPolicy(const NicTeamingPolicy& policy) = 0;
};

/// A standard switch, which connects its port groups with physical adapters. It is as it was when
/// it was asked for. Throws HostCtlException when the host fails.
class VirtualSwitch {
 public:
  virtual ~VirtualSwitch() = default;
  virtual std::string GetName() const = 0;
  virtual std::vector<std::string> GetUplinks() const = 0;
  /// An adapter that another switch has is taken from that one.
  virtual void AddUplink(const std::string& pnic) = 0;
  virtual void RemoveUplink(const std::string& pnic) = 0;
  virtual std::vector<std::unique_ptr<PortGroup>> GetPortGroups() const = 0;
};

}  // namespace HostCtl::Network
