// SPDX-License-Identifier: MIT
#include "sample/sample_driver.h"

#include <algorithm>

#include "hostctl/lib/exception.h"
#include "sample/changes.h"

namespace HostSample {

namespace {

std::string textOf(const HostCtl::Adv::OptionValue& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  return std::get<std::string>(value);
}

}  // namespace

void SampleDriver::Enter(std::string_view operation) {
  const auto faults = store_.Get(&HostState::faults);
  const auto fault = faults.find(std::string(operation));
  if (fault != faults.end()) throw HostCtl::Lib::HostCtlException(fault->second);
}

bool SampleDriver::HasRunningVirtualMachines() {
  const auto machines = store_.Get(&HostState::machines);
  return std::any_of(machines.begin(), machines.end(),
                     [](const Machine& machine) { return machine.running; });
}

std::vector<HostCtl::System::StorageAdapter> SampleDriver::ReadStorageAdapters() {
  return store_.Get(&HostState::adapters);
}

std::string SampleDriver::ReadModuleVersion(const std::string& module) {
  const auto modules = store_.Get(&HostState::modules);
  const auto found = modules.find(module);
  return found == modules.end() ? std::string() : found->second;
}

std::optional<HostCtl::Adv::OptionValue> SampleDriver::ReadOption(const std::string& path) {
  const auto options = store_.Get(&HostState::options);
  const auto found = options.find(path);
  return found == options.end() ? std::nullopt : std::optional(found->second);
}

std::vector<HostCtl::System::FirewallRuleset> SampleDriver::ReadFirewallRulesets() {
  return store_.Get(&HostState::rulesets);
}

std::vector<HostCtl::Authentication::SmartCardSlot> SampleDriver::ReadSmartCardSlots() {
  return store_.Get(&HostState::slots);
}

bool SampleDriver::ReadFeature(HostCtl::System::Feature feature) {
  const auto features = store_.Get(&HostState::features);
  const auto found = features.find(std::string(nameOf(feature)));
  return found != features.end() && found->second;
}

void SampleDriver::WriteOption(const std::string& path, const HostCtl::Adv::OptionValue& value) {
  setOption(store_, path, value);
  journal_.Append("hostctl", "SetOption " + path + " " + textOf(value));
}

void SampleDriver::WriteFirewallRuleset(const std::string& id, bool enabled) {
  setFirewallRuleset(store_, id, enabled);
  journal_.Append("hostctl", "SetFirewallRuleset " + id + (enabled ? " enabled" : " disabled"));
}

void SampleDriver::LoadKeyboardMappings(const std::string& layout) {
  loadKeyboardLayout(store_, layout);
  journal_.Append("hostctl", "LoadKeyboardMappings " + layout);
}

void SampleDriver::WriteKeyboardLayout(const std::string& layout) {
  setKeyboardLayout(store_, layout);
  journal_.Append("hostctl", "SetKeyboardLayout " + layout);
}

void SampleDriver::StoreUserAccounts() {
  storeAccounts(store_);
  journal_.Append("hostctl", "StoreUserAccountsToCs");
}

void SampleDriver::RaiseSystemAlert(const std::string& text) {
  raiseAlert(store_, text);
  journal_.Append("hostctl", "SetSystemAlert " + text);
}

}  // namespace HostSample
