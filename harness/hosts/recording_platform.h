// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "harness/temporary_folder.h"
#include "hostseam/driver.h"
#include "linux/driver.h"
#include "linux/platform.h"

namespace TestSupport {

/// A platform that writes down what leaves the program, in order: "log.PRIORITY TEXT" with the
/// number of the priority, "event TEXT", "audit EVENT USER OUTCOME NAME=VALUE", and "run PATH
/// ARGUMENTS".
class RecordingPlatform : public HostLinux::LinuxPlatform {
 public:
  /// Shell scripts that stand in for tools, by path; the tool's arguments are the script's. An
  /// empty script is a tool that cannot be started; one that is not listed is executed as it is.
  std::map<std::string, std::string> scripts;
  std::filesystem::path root = "/";
  std::optional<std::string> pamDirectory;
  int eventStatus = 0;

  std::vector<std::string> Lines() const;
  void Clear();

  std::string HostPath(std::string_view path) const override;
  HostCtl::Lib::Program ChildProgram(const HostCtl::Lib::Program& program) override;
  void OpenLog() override {}
  void Log(int priority, const std::string& line) override;
  int EventInit() override { return eventStatus; }
  int EventAdd(const std::string& text) override;
  void EventClose() override { Record("event closed"); }
  void Audit(const HostCtl::Lib::AuditRecord& record) override;
  std::optional<std::string> PamServiceDirectory() const override { return pamDirectory; }

 private:
  void Record(std::string line);
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

/// A host made of values that a test sets, and an empty machine in everything else; `failing` names
/// the library operation that shall throw.
class ValueDriver : public HostLinux::LinuxDriver {
 public:
  ValueDriver() : LinuxDriver("/nowhere") {}

  HostCtl::System::VersionRecord version;
  HostCtl::System::HardwareRecord hardware;
  HostCtl::System::MemoryRecord memory;
  std::vector<HostCtl::System::StorageAdapter> adapters;
  std::map<std::string, std::string> moduleVersions;
  std::vector<HostSeam::KernelNic> nics;
  HostSeam::DnsRecord dns;
  std::vector<HostCtl::Authentication::SmartCardSlot> slots;
  std::string failing;

  void Enter(std::string_view operation) override;
  HostCtl::System::VersionRecord ReadVersion() override { return version; }
  HostCtl::System::HardwareRecord ReadHardware() override { return hardware; }
  HostCtl::System::MemoryRecord ReadMemory() override { return memory; }
  std::vector<HostCtl::System::StorageAdapter> ReadStorageAdapters() override { return adapters; }
  std::string ReadModuleVersion(const std::string& module) override {
    return moduleVersions[module];
  }
  std::vector<HostSeam::KernelNic> ReadKernelNics() override { return nics; }
  HostSeam::DnsRecord ReadDns() override { return dns; }
  std::vector<HostCtl::Authentication::SmartCardSlot> ReadSmartCardSlots() override {
    return slots;
  }
};

/// Puts both under the program for one test, and ignores SIGPIPE as the program does.
class OnRecordingHost : public testing::Test {
 protected:
  OnRecordingHost();
  RecordingPlatform* platform;
  ValueDriver* driver;
};

}  // namespace TestSupport
