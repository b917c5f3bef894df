// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/system/system_info.h"

namespace TarnCtl::System {

/// The information objects of the host that the program runs on; each operation reads it afresh.
class SystemInfoImpl : public HostCtl::System::SystemInfo {
 public:
  HostCtl::System::VersionRecord GetVersion() override;
  std::string GetWelcomeMessage() override;
  int GetBootOption() override;
  void SetSystemAlert(const std::string& text) override;
  std::vector<std::string> GetKeyboardLayouts() override;
  std::string GetKeyboardLayout() override;
  void LoadKeyboardMappings(const std::string& layout) override;
  void SetKeyboardLayout(const std::string& layout) override;
  std::string GetModuleVersion(const std::string& module) override;
  std::vector<HostCtl::System::FirewallRuleset> GetFirewallRulesets() override;
  void SetFirewallRuleset(const std::string& id, bool enabled) override;
};

class HardwareInfoImpl : public HostCtl::System::HardwareInfo {
 public:
  std::string GetVendorName() override;
  std::string GetProductName() override;
  std::string GetSerialNumber() override;
  std::string GetServiceTag() override;
  std::string GetBmcVersion() override;
  HostCtl::System::BiosData GetBiosData() override;
};

class ProcessorInfoImpl : public HostCtl::System::ProcessorInfo {
 public:
  std::string GetModelName() override;
  int GetNumCpuPackages() override;
};

class MemoryInfoImpl : public HostCtl::System::MemoryInfo {
 public:
  std::uint64_t GetTotalPages() override;
  std::uint64_t GetPageSize() override;
};

class StorageInfoImpl : public HostCtl::System::StorageInfo {
 public:
  std::vector<HostCtl::System::StorageAdapter> GetAdapters() override;
};

}  // namespace TarnCtl::System
