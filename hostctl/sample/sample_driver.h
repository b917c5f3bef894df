// SPDX-License-Identifier: MIT
#pragma once

#include "hostseam/driver.h"
#include "sample/journal.h"
#include "sample/network_writer.h"
#include "sample/store.h"

namespace HostSample {

/// The host that host.json describes. Its key `faults` makes an operation of the library fail: the
/// operation's name, and the text of the exception. A changing call is a line of the journal.
class SampleDriver : public HostSeam::Driver {
 public:
  /// Both must outlive the driver's last use.
  SampleDriver(Store& store, const Journal& journal) : store_(store), journal_(journal) {}

  void Enter(std::string_view operation) override;
  void Note(const std::string& call) override { journal_.Append("hostctl", call); }

  HostCtl::System::VersionRecord ReadVersion() override { return store_.Get(&HostState::version); }
  HostCtl::System::HardwareRecord ReadHardware() override {
    return store_.Get(&HostState::hardware);
  }
  HostCtl::System::ProcessorRecord ReadProcessors() override {
    return store_.Get(&HostState::processors);
  }
  HostCtl::System::MemoryRecord ReadMemory() override { return store_.Get(&HostState::memory); }
  std::vector<HostCtl::System::StorageAdapter> ReadStorageAdapters() override;
  std::string ReadModuleVersion(const std::string& module) override;

  std::vector<HostSeam::KernelNic> ReadKernelNics() override {
    return store_.Get(&HostState::kernelNics);
  }
  std::vector<HostCtl::Network::PnicRecord> ReadPnics() override {
    return store_.Get(&HostState::pnics);
  }
  std::vector<HostSeam::DistributedSwitchRecord> ReadDistributedSwitches() override {
    return store_.Get(&HostState::distributedSwitches);
  }
  bool HasRunningVirtualMachines() override;
  std::vector<HostSeam::SwitchRecord> ReadSwitches() override {
    return store_.Get(&HostState::switches);
  }
  bool ReadIpv6Enabled() override { return store_.Get(&HostState::ipv6Enabled); }
  HostSeam::DnsRecord ReadDns() override { return store_.Get(&HostState::dns); }
  HostSeam::RoutingRecord ReadRouting() override { return store_.Get(&HostState::routing); }

  std::string ReadWelcomeMessage() override { return store_.Get(&HostState::welcomeMessage); }
  int ReadBootOption() override { return store_.Get(&HostState::bootOption); }
  std::optional<HostCtl::Adv::OptionValue> ReadOption(const std::string& path) override;
  std::vector<std::string> ReadKeyboardLayouts() override {
    return store_.Get(&HostState::keyboardLayouts);
  }
  std::string ReadKeyboardLayout() override { return store_.Get(&HostState::keyboardLayout); }
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
  Store& store_;
  const Journal& journal_;
  SampleNetworkWriter network_{store_};
};

}  // namespace HostSample
