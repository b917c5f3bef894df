// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace HostCtl::System {

/// The system version record. Texts are empty where the host does not say.
struct VersionRecord {
  std::string productName;
  std::string version;
  std::string kernelVersion;
  unsigned buildNumber = 0;
};

/// The firmware's data record. Texts are empty where the firmware does not say.
struct BiosData {
  std::string vendor;
  std::string version;
  std::string releaseDate;
  std::string assetTag;
  int majorVersion = 0;
  int minorVersion = 0;
};

/// The machine itself. Texts are empty where the machine does not say.
struct HardwareRecord {
  std::string vendorName;
  std::string productName;
  std::string serialNumber;
  std::string serviceTag;
  std::string bmcVersion;
  BiosData bios;
};

/// All packages are of one model.
struct ProcessorRecord {
  std::string modelName;
  int packages = 1;
};

/// The memory that the operating system has; the page size is in bytes.
struct MemoryRecord {
  std::uint64_t totalPages = 0;
  std::uint64_t pageSize = 4096;
};

/// A storage adapter and the kernel module that drives it.
struct StorageAdapter {
  std::string name;
  std::string driverName;
};

/// A named set of firewall rules that is switched as one.
struct FirewallRuleset {
  std::string id;
  bool enabled = false;
};

/// The boot option of a host whose changes do not outlive a restart.
inline constexpr int kBootAudit = 1;

}  // namespace HostCtl::System
