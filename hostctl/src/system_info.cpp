// SPDX-License-Identifier: MIT
#include "src/enter.h"
#include "tarnctl/system/system_info_impl.h"

namespace TarnCtl::System {

using namespace HostCtl::System;

VersionRecord SystemInfoImpl::GetVersion() {
  return enter("GetVersion").ReadVersion();
}

std::string SystemInfoImpl::GetWelcomeMessage() {
  return enter("GetWelcomeMessage").ReadWelcomeMessage();
}

int SystemInfoImpl::GetBootOption() {
  return enter("GetBootOption").ReadBootOption();
}

void SystemInfoImpl::SetSystemAlert(const std::string& text) {
  enter("SetSystemAlert").RaiseSystemAlert(text);
}

std::vector<std::string> SystemInfoImpl::GetKeyboardLayouts() {
  return enter("GetKeyboardLayouts").ReadKeyboardLayouts();
}

std::string SystemInfoImpl::GetKeyboardLayout() {
  return enter("GetKeyboardLayout").ReadKeyboardLayout();
}

void SystemInfoImpl::LoadKeyboardMappings(const std::string& layout) {
  enter("LoadKeyboardMappings").LoadKeyboardMappings(layout);
}

void SystemInfoImpl::SetKeyboardLayout(const std::string& layout) {
  enter("SetKeyboardLayout").WriteKeyboardLayout(layout);
}

std::string SystemInfoImpl::GetModuleVersion(const std::string& module) {
  return enter("GetModuleVersion").ReadModuleVersion(module);
}

std::vector<FirewallRuleset> SystemInfoImpl::GetFirewallRulesets() {
  return enter("GetFirewallRulesets").ReadFirewallRulesets();
}

void SystemInfoImpl::SetFirewallRuleset(const std::string& id, bool enabled) {
  enter("SetFirewallRuleset").WriteFirewallRuleset(id, enabled);
}

std::string HardwareInfoImpl::GetVendorName() {
  return enter("GetVendorName").ReadHardware().vendorName;
}

std::string HardwareInfoImpl::GetProductName() {
  return enter("GetProductName").ReadHardware().productName;
}

std::string HardwareInfoImpl::GetSerialNumber() {
  return enter("GetSerialNumber").ReadHardware().serialNumber;
}

std::string HardwareInfoImpl::GetServiceTag() {
  return enter("GetServiceTag").ReadHardware().serviceTag;
}

std::string HardwareInfoImpl::GetBmcVersion() {
  return enter("GetBmcVersion").ReadHardware().bmcVersion;
}

BiosData HardwareInfoImpl::GetBiosData() {
  return enter("GetBiosData").ReadHardware().bios;
}

std::string ProcessorInfoImpl::GetModelName() {
  return enter("GetModelName").ReadProcessors().modelName;
}

int ProcessorInfoImpl::GetNumCpuPackages() {
  return enter("GetNumCpuPackages").ReadProcessors().packages;
}

std::uint64_t MemoryInfoImpl::GetTotalPages() {
  return enter("GetTotalPages").ReadMemory().totalPages;
}

std::uint64_t MemoryInfoImpl::GetPageSize() {
  return enter("GetPageSize").ReadMemory().pageSize;
}

std::vector<StorageAdapter> StorageInfoImpl::GetAdapters() {
  return enter("GetAdapters").ReadStorageAdapters();
}

}  // namespace TarnCtl::System
