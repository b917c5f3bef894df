// SPDX-License-Identifier: MIT
#include "linux/driver.h"

#include "linux/hardware.h"
#include "linux/kernel_nics.h"
#include "linux/keyboard_layouts.h"
#include "linux/network/connections.h"
#include "linux/network/distributed_switches.h"
#include "linux/network/nic_reader.h"
#include "linux/network/switch_files.h"
#include "linux/network/switches.h"
#include "linux/os_version.h"
#include "linux/pnics.h"
#include "linux/processors.h"
#include "linux/resolver.h"
#include "linux/running_machines.h"
#include "linux/user_accounts.h"

namespace HostLinux {

HostCtl::System::VersionRecord LinuxDriver::ReadVersion() {
  return readVersion(files_);
}
HostCtl::System::HardwareRecord LinuxDriver::ReadHardware() {
  return readHardware(files_);
}
HostCtl::System::ProcessorRecord LinuxDriver::ReadProcessors() {
  return readProcessors(files_);
}
HostCtl::System::MemoryRecord LinuxDriver::ReadMemory() {
  return readMemory(files_);
}

std::vector<HostCtl::System::StorageAdapter> LinuxDriver::ReadStorageAdapters() {
  return readStorageAdapters(files_);
}

std::string LinuxDriver::ReadModuleVersion(const std::string& module) {
  return readModuleVersion(files_, module);
}

std::vector<HostSeam::KernelNic> LinuxDriver::ReadKernelNics() {
  auto nics = readKernelNics(files_, "ReadKernelNics",
                             networkd_.Read(files_, NetworkdReporter::Clock::now()));
  const Switches switches = readSwitchFiles(OwnFiles(files_));
  const auto& ovs = ovs_.Read(files_, OvsDatabase::Clock::now());
  for (auto& nic : nics) nic.connection = connectionOf(nic.name, switches, ovs, files_);
  return nics;
}

std::vector<HostCtl::Network::PnicRecord> LinuxDriver::ReadPnics() {
  auto pnics = readPnics(files_, readLinks("ReadPnics"));
  if (const auto bridges = askForOvsBridges(files_)) nameOvsBridges(files_, *bridges, pnics);
  return pnics;
}

std::vector<HostSeam::SwitchRecord> LinuxDriver::ReadSwitches() {
  return readSwitches(files_);
}

std::vector<HostSeam::DistributedSwitchRecord> LinuxDriver::ReadDistributedSwitches() {
  return readDistributedSwitches(files_);
}

bool LinuxDriver::HasRunningVirtualMachines() {
  return hasRunningMachines(files_);
}

bool LinuxDriver::ReadIpv6Enabled() {
  return files_.ReadLine("/proc/sys/net/ipv6/conf/all/disable_ipv6") == "0";
}

HostSeam::DnsRecord LinuxDriver::ReadDns() {
  return readDns(files_);
}

HostSeam::RoutingRecord LinuxDriver::ReadRouting() {
  return routingFrom(readDefaultRoutes("ReadRouting"));
}

std::string LinuxDriver::ReadWelcomeMessage() {
  return readWelcomeMessage(files_);
}
int LinuxDriver::ReadBootOption() {
  return readBootOption(files_);
}

std::optional<HostCtl::Adv::OptionValue> LinuxDriver::ReadOption(const std::string& path) {
  return readOption(files_, path);
}

std::vector<std::string> LinuxDriver::ReadKeyboardLayouts() {
  return readKeyboardLayouts(files_);
}
std::string LinuxDriver::ReadKeyboardLayout() {
  return readKeyboardLayout(files_);
}

std::vector<HostCtl::System::FirewallRuleset> LinuxDriver::ReadFirewallRulesets() {
  return readFirewallRulesets(files_);
}

std::vector<HostCtl::Authentication::SmartCardSlot> LinuxDriver::ReadSmartCardSlots() {
  return smartCards_.Read();
}

bool LinuxDriver::ReadFeature(HostCtl::System::Feature feature) {
  return readFeature(files_, feature);
}

void LinuxDriver::WriteOption(const std::string& path, const HostCtl::Adv::OptionValue& value) {
  writeOption(files_, path, value);
}

void LinuxDriver::WriteFirewallRuleset(const std::string& id, bool enabled) {
  writeFirewallRuleset(files_, id, enabled);
}

void LinuxDriver::LoadKeyboardMappings(const std::string& layout) {
  loadKeyboardMappings(files_, layout);
}

void LinuxDriver::WriteKeyboardLayout(const std::string& layout) {
  writeKeyboardLayout(files_, layout);
}

void LinuxDriver::StoreUserAccounts() {
  storeAccounts(files_);
}

void LinuxDriver::RaiseSystemAlert(const std::string& text) {
  raiseAlert(files_, text);
}

}  // namespace HostLinux
