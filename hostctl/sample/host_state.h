// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "hostseam/driver.h"
#include "hostseam/tool_host.h"

namespace HostSample {

/// Keeps the order of keys, so that a rewritten file still reads as its author laid it out.
using Json = nlohmann::ordered_json;

/// Somebody who may log in. The PIN counts only while a card of this account is in a slot.
struct Account {
  std::string name;
  std::string password;
  std::optional<std::string> pin;
  bool permission = false;
  bool expired = false;
};

/// A virtual machine; one with an autostart number is managed by the host's autostart.
struct Machine {
  std::string name;
  bool running = false;
  std::optional<int> autostart;
};

/// How the program at a path, or a call that begins with a path and words, is to end in place of
/// what it does: with an answer, by a signal, or not even started; the first two after so many
/// seconds.
struct Rehearsal {
  HostSeam::ToolAnswer answer;
  int signal = 0;
  int seconds = 0;
  bool missing = false;
};

enum class Power { On, Off, Restarting };
std::string_view nameOf(Power power);

/// The whole of host.json as values. Optional parts are empty where the file does not have them.
struct HostState {
  HostCtl::System::VersionRecord version;
  HostCtl::System::HardwareRecord hardware;
  HostCtl::System::ProcessorRecord processors;
  HostCtl::System::MemoryRecord memory;
  std::vector<HostCtl::System::StorageAdapter> adapters;
  std::map<std::string, std::string> modules;

  bool ipv6Enabled = false;
  std::vector<HostCtl::Network::PnicRecord> pnics;
  std::vector<HostSeam::SwitchRecord> switches;
  std::vector<HostSeam::DistributedSwitchRecord> distributedSwitches;
  std::vector<HostSeam::KernelNic> kernelNics;
  HostSeam::DnsRecord dns;
  HostSeam::RoutingRecord routing;

  std::string welcomeMessage;
  int bootOption = 0;
  std::map<std::string, HostCtl::Adv::OptionValue> options;
  std::vector<std::string> keyboardLayouts;
  std::string keyboardLayout;
  std::vector<HostCtl::System::FirewallRuleset> rulesets;
  std::vector<HostCtl::Authentication::SmartCardSlot> slots;

  bool lockdownEnabled = false;
  bool lockdownPossible = false;
  std::vector<Account> accounts;
  int minimumPasswordLength = 0;
  std::map<std::string, bool> servicesRunning;
  std::vector<Machine> machines;
  std::map<std::string, std::string> packages;
  /// By file, then by digest.
  std::map<std::string, std::map<std::string, std::string>> certificates;
  std::map<std::string, HostSeam::HostKey> hostKeys;

  Power power = Power::On;
  std::map<std::string, bool> features;
  /// Addresses that answer a ping.
  std::vector<std::string> reachable;
  /// Names that the name servers know, and how long they take to answer.
  std::vector<std::string> resolvable;
  int resolutionSeconds = 0;
  std::string systemAlert;
  int eventLibraryStatus = 0;
  std::map<std::string, std::string> faults;
  std::map<std::string, Rehearsal> tools;
};

/// Throws KeyError for the first key that is missing or is not what it should be.
HostState readHostState(const Json& json);

const Account* findAccount(const HostState& state, const std::string& name);

/// Whether `secret` lets `account` in: its password, or its PIN while its card is in a slot.
bool acceptsSecret(const HostState& state, const Account& account, const std::string& secret);

}  // namespace HostSample
