// SPDX-License-Identifier: MIT
#include "sample/sample_driver.h"

#include "hostctl/lib/exception.h"
#include "sample/changes.h"

namespace HostSample {

void SampleDriver::Enter(std::string_view operation) {
  const auto& faults = store_.State().faults;
  const auto fault = faults.find(std::string(operation));
  if (fault != faults.end()) throw HostCtl::Lib::HostCtlException(fault->second);
}

std::vector<HostCtl::System::StorageAdapter> SampleDriver::ReadStorageAdapters() {
  return store_.State().adapters;
}

std::string SampleDriver::ReadModuleVersion(const std::string& module) {
  const auto& modules = store_.State().modules;
  const auto found = modules.find(module);
  return found == modules.end() ? std::string() : found->second;
}

std::optional<HostCtl::Adv::OptionValue> SampleDriver::ReadOption(const std::string& path) {
  const auto& options = store_.State().options;
  const auto found = options.find(path);
  return found == options.end() ? std::nullopt : std::optional(found->second);
}

std::vector<HostCtl::System::FirewallRuleset> SampleDriver::ReadFirewallRulesets() {
  return store_.State().rulesets;
}

std::vector<HostCtl::Authentication::SmartCardSlot> SampleDriver::ReadSmartCardSlots() {
  return store_.State().slots;
}

void SampleDriver::RaiseSystemAlert(const std::string& text) {
  if (raiseAlert(store_, text)) journal_.Append("hostctl", "SetSystemAlert " + text);
}

}  // namespace HostSample
