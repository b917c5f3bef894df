// SPDX-License-Identifier: MIT
#pragma once

#include "hostseam/driver.h"
#include "linux/files.h"
#include "linux/network/ovsdb.h"
#include "linux/network_writer.h"
#include "linux/networkd_reporter.h"
#include "linux/settings.h"
#include "linux/smart_cards.h"

namespace HostLinux {

/// The facts of a Linux machine. Files are read below `root`; the network tables are always those
/// of the kernel, and the card readers those of the machine.
class LinuxDriver : public HostSeam::Driver {
 public:
  explicit LinuxDriver(std::string root = {}) : files_(std::move(root)) {}

  HostCtl::System::VersionRecord ReadVersion() override;
  HostCtl::System::HardwareRecord ReadHardware() override;
  HostCtl::System::ProcessorRecord ReadProcessors() override;
  HostCtl::System::MemoryRecord ReadMemory() override;
  std::vector<HostCtl::System::StorageAdapter> ReadStorageAdapters() override;
  std::string ReadModuleVersion(const std::string& module) override;

  std::vector<HostSeam::KernelNic> ReadKernelNics() override;
  std::vector<HostCtl::Network::PnicRecord> ReadPnics() override;
  std::vector<HostSeam::SwitchRecord> ReadSwitches() override;
  std::vector<HostSeam::DistributedSwitchRecord> ReadDistributedSwitches() override;
  bool HasRunningVirtualMachines() override;
  bool ReadIpv6Enabled() override;
  HostSeam::DnsRecord ReadDns() override;
  HostSeam::RoutingRecord ReadRouting() override;

  std::string ReadWelcomeMessage() override;
  int ReadBootOption() override;
  std::optional<HostCtl::Adv::OptionValue> ReadOption(const std::string& path) override;
  std::vector<std::string> ReadKeyboardLayouts() override;
  std::string ReadKeyboardLayout() override;
  std::vector<HostCtl::System::FirewallRuleset> ReadFirewallRulesets() override;
  std::vector<HostCtl::Authentication::SmartCardSlot> ReadSmartCardSlots() override;
  bool ReadFeature(HostCtl::System::Feature feature) override;

  HostSeam::NetworkWriter& Network() override { return network_; }
  void WriteOption(const std::string& path, const HostCtl::Adv::OptionValue& value) override;
  void WriteFirewallRuleset(const std::string& id, bool enabled) override;
  void LoadKeyboardMappings(const std::string& layout) override;
  void WriteKeyboardLayout(const std::string& layout) override;
  void StoreUserAccounts() override;
  void RaiseSystemAlert(const std::string& text) override;

 private:
  Files files_;
  LinuxNetworkWriter network_{files_};
  NetworkdReporter networkd_;
  OvsDatabase ovs_;
  SmartCards smartCards_;
};

}  // namespace HostLinux
