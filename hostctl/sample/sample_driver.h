// SPDX-License-Identifier: MIT
#pragma once

#include "hostseam/driver.h"
#include "sample/journal.h"
#include "sample/store.h"

namespace HostSample {

/// The host that host.json describes. Its key `faults` makes an operation of the library fail: the
/// operation's name, and the text of the exception. A changing call is a line of the journal.
class SampleDriver : public HostSeam::Driver {
 public:
  /// Both must outlive the driver's last use.
  SampleDriver(Store& store, const Journal& journal) : store_(store), journal_(journal) {}

  void Enter(std::string_view operation) override;

  HostCtl::System::VersionRecord ReadVersion() override { return store_.State().version; }
  HostCtl::System::HardwareRecord ReadHardware() override { return store_.State().hardware; }
  HostCtl::System::ProcessorRecord ReadProcessors() override { return store_.State().processors; }
  HostCtl::System::MemoryRecord ReadMemory() override { return store_.State().memory; }
  std::vector<HostCtl::System::StorageAdapter> ReadStorageAdapters() override;
  std::string ReadModuleVersion(const std::string& module) override;

  std::vector<HostSeam::KernelNic> ReadKernelNics() override { return store_.State().kernelNics; }
  std::vector<HostCtl::Network::Pnic> ReadPnics() override { return store_.State().pnics; }
  bool ReadIpv6Enabled() override { return store_.State().ipv6Enabled; }
  HostSeam::DnsRecord ReadDns() override { return store_.State().dns; }
  HostSeam::RoutingRecord ReadRouting() override { return store_.State().routing; }

  std::string ReadWelcomeMessage() override { return store_.State().welcomeMessage; }
  int ReadBootOption() override { return store_.State().bootOption; }
  std::optional<HostCtl::Adv::OptionValue> ReadOption(const std::string& path) override;
  std::vector<std::string> ReadKeyboardLayouts() override { return store_.State().keyboardLayouts; }
  std::string ReadKeyboardLayout() override { return store_.State().keyboardLayout; }
  std::vector<HostCtl::System::FirewallRuleset> ReadFirewallRulesets() override;
  std::vector<HostCtl::Authentication::SmartCardSlot> ReadSmartCardSlots() override;

  void RaiseSystemAlert(const std::string& text) override;

 private:
  Store& store_;
  const Journal& journal_;
};

}  // namespace HostSample
