// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "linux/files.h"
#include "linux/network/interface_state.h"
#include "linux/network/ovs_change.h"
#include "linux/network/ovs_model.h"

namespace HostLinux {

/// An internal interface of a distributed switch that is about to leave its port: what Open vSwitch
/// and the kernel have about it, and the way back. Whoever makes one holds the network's lock.
class OvsNic {
 public:
  /// Throws HostCtlException of the context, also for an interface that cannot leave its port: the
  /// bridge's own, one of a bond, and one that Open vSwitch did not make. `files` outlives it.
  OvsNic(const Files& files, ChangeContext context, const std::string& nic);

  const ChangeContext& Context() const { return context_; }
  const std::string& Name() const { return place_.interface->name; }
  const OvsBridges& Bridges() const { return bridges_; }
  const OvsBridge& Bridge() const { return *place_.bridge; }
  const OvsPort& Port() const { return *place_.port; }
  const OvsInterface& Interface() const { return *place_.interface; }
  const InterfaceState& State() const { return state_; }
  /// The hardware address that its device has, for a new device to have it too.
  std::string AddressSetting() const;
  bool IsBlocked() const { return blocked_; }
  /// Asks whether it is blocked, for the way back; throws HostCtlException.
  void ReadBlocking();

  /// Gives the new device what the old one had.
  void PutBackState() const { state_.PutBack(); }
  /// The interface is on its old port again, wherever it is by now, with its addresses and
  /// its record as it was; `besides` goes with that. Failures are logged. Where Open vSwitch is too
  /// slow the record keeps the hardware address, for the device may yet be made anew.
  void PutBack(OvsChange besides) const noexcept;

  [[noreturn]] void Refuse(const std::string& cause) const;

 private:
  void PutBackAddressSetting() const;

  const Files& files_;
  ChangeContext context_;
  OvsBridges bridges_;
  OvsPlace place_;
  InterfaceState state_;
  bool blocked_ = false;
};

}  // namespace HostLinux
