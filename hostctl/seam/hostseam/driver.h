// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hostctl/adv/advanced_option.h"
#include "hostctl/auth/smart_card.h"
#include "hostctl/lib/platform.h"
#include "hostctl/system/feature_list.h"
#include "hostctl/system/records.h"
#include "hostseam/network.h"

namespace HostSeam {

/// The machine below the host-control library: one implementation a kind of host. Reads answer with
/// what holds now; what the machine does not know is an empty text, an empty list or nothing, and
/// only a read that went wrong throws HostCtl::Lib::HostCtlException.
class Driver {
 public:
  virtual ~Driver() = default;

  /// Called first by every operation of the library with its name; a host that rehearses failures
  /// throws here.
  virtual void Enter(std::string_view operation) { static_cast<void>(operation); }
  /// Told every changing call of the network's part of the library with its arguments, before it is
  /// carried out or collected; a host that keeps a journal writes it down.
  virtual void Note(const std::string& call) { static_cast<void>(call); }

  virtual HostCtl::System::VersionRecord ReadVersion() = 0;
  virtual HostCtl::System::HardwareRecord ReadHardware() = 0;
  virtual HostCtl::System::ProcessorRecord ReadProcessors() = 0;
  virtual HostCtl::System::MemoryRecord ReadMemory() = 0;
  virtual std::vector<HostCtl::System::StorageAdapter> ReadStorageAdapters() = 0;
  virtual std::string ReadModuleVersion(const std::string& module) = 0;

  /// In the host's order.
  virtual std::vector<KernelNic> ReadKernelNics() = 0;
  virtual std::vector<HostCtl::Network::PnicRecord> ReadPnics() = 0;
  virtual std::vector<SwitchRecord> ReadSwitches() = 0;
  virtual std::vector<DistributedSwitchRecord> ReadDistributedSwitches() = 0;
  virtual bool ReadIpv6Enabled() = 0;
  virtual DnsRecord ReadDns() = 0;
  virtual RoutingRecord ReadRouting() = 0;

  virtual std::string ReadWelcomeMessage() = 0;
  virtual int ReadBootOption() = 0;
  virtual std::optional<HostCtl::Adv::OptionValue> ReadOption(const std::string& path) = 0;
  virtual std::vector<std::string> ReadKeyboardLayouts() = 0;
  virtual std::string ReadKeyboardLayout() = 0;
  virtual std::vector<HostCtl::System::FirewallRuleset> ReadFirewallRulesets() = 0;
  virtual bool ReadFeature(HostCtl::System::Feature feature) = 0;
  virtual std::vector<HostCtl::Authentication::SmartCardSlot> ReadSmartCardSlots() = 0;

  /// True where the virtualisation service does not answer.
  virtual bool HasRunningVirtualMachines() = 0;

  /// The way to change the network.
  virtual NetworkWriter& Network() = 0;
  /// Changes. Each throws HostCtlException with the host as it was.
  virtual void WriteOption(const std::string& path, const HostCtl::Adv::OptionValue& value) = 0;
  virtual void WriteFirewallRuleset(const std::string& id, bool enabled) = 0;
  virtual void LoadKeyboardMappings(const std::string& layout) = 0;
  virtual void WriteKeyboardLayout(const std::string& layout) = 0;
  virtual void StoreUserAccounts() = 0;
  /// Like Enter, may be called from several threads.
  virtual void RaiseSystemAlert(const std::string& text) = 0;
};

/// Puts a host under the program. Called by main, once, before anything else.
void useHost(std::unique_ptr<HostCtl::Lib::Platform> platform, std::unique_ptr<Driver> driver);

/// The driver in use.
Driver& driver();

}  // namespace HostSeam
