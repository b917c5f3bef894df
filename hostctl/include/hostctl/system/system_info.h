// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hostctl/system/records.h"

namespace HostCtl::System {

/// The host as an operating system. Every operation throws HostCtlException when the host fails it.
class SystemInfo {
 public:
  virtual ~SystemInfo() = default;
  virtual VersionRecord GetVersion() = 0;
  /// The administrator's own welcome text (markup); empty when there is none.
  virtual std::string GetWelcomeMessage() = 0;
  virtual int GetBootOption() = 0;
  /// Raises a host-wide alert.
  virtual void SetSystemAlert(const std::string& text) = 0;
  virtual std::vector<std::string> GetKeyboardLayouts() = 0;
  virtual std::string GetKeyboardLayout() = 0;
  /// Puts the key map of `layout`, one of GetKeyboardLayouts, in force on the console at once.
  virtual void LoadKeyboardMappings(const std::string& layout) = 0;
  /// Stores `layout` as the one that the host starts with.
  virtual void SetKeyboardLayout(const std::string& layout) = 0;
  /// Version of a kernel module; empty when the module is not there or has none.
  virtual std::string GetModuleVersion(const std::string& module) = 0;
  virtual std::vector<FirewallRuleset> GetFirewallRulesets() = 0;
  /// Throws HostCtlException also when the host has no ruleset `id`.
  virtual void SetFirewallRuleset(const std::string& id, bool enabled) = 0;
};

/// The machine below the operating system. Texts are empty where it does not say; throws
/// HostCtlException when the host fails to read it. So do the three below.
class HardwareInfo {
 public:
  virtual ~HardwareInfo() = default;
  virtual std::string GetVendorName() = 0;
  virtual std::string GetProductName() = 0;
  virtual std::string GetSerialNumber() = 0;
  virtual std::string GetServiceTag() = 0;
  virtual std::string GetBmcVersion() = 0;
  virtual BiosData GetBiosData() = 0;
};

/// The machine's processors.
class ProcessorInfo {
 public:
  virtual ~ProcessorInfo() = default;
  virtual std::string GetModelName() = 0;
  virtual int GetNumCpuPackages() = 0;
};

/// The machine's memory.
class MemoryInfo {
 public:
  virtual ~MemoryInfo() = default;
  virtual std::uint64_t GetTotalPages() = 0;
  /// In bytes.
  virtual std::uint64_t GetPageSize() = 0;
};

/// The machine's storage adapters.
class StorageInfo {
 public:
  virtual ~StorageInfo() = default;
  virtual std::vector<StorageAdapter> GetAdapters() = 0;
};

}  // namespace HostCtl::System
