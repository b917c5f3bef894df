// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "harness/temporary_folder.h"
#include "hostseam/driver.h"

namespace TestSupport {

/// A platform that writes down what leaves the program, in order: "log.PRIORITY TEXT" with the
/// number of the priority, "event TEXT", "audit EVENT USER OUTCOME NAME=VALUE", and "run PATH
/// ARGUMENTS".
class RecordingPlatform : public HostCtl::Lib::Platform {
 public:
  /// Shell scripts that stand in for tools, by path; the tool's arguments are the script's. A tool
  /// that is not listed is executed as it is.
  std::map<std::string, std::string> scripts;
  std::filesystem::path root = "/";
  std::optional<std::string> pamDirectory;
  int eventStatus = 0;

  std::vector<std::string> Lines() const;
  void Clear();

  std::string HostPath(std::string_view path) const override;
  HostCtl::Lib::Program ChildProgram(const HostCtl::Lib::Program& program) override;
  HostCtl::Lib::Program TerminalProgram(const HostCtl::Lib::Program& program) override;
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

/// A host made of values that a test sets; `failing` names the library operation that shall throw.
class ValueDriver : public HostSeam::Driver {
 public:
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
  HostCtl::System::ProcessorRecord ReadProcessors() override { return {}; }
  HostCtl::System::MemoryRecord ReadMemory() override { return memory; }
  std::vector<HostCtl::System::StorageAdapter> ReadStorageAdapters() override { return adapters; }
  std::string ReadModuleVersion(const std::string& module) override;
  std::vector<HostSeam::KernelNic> ReadKernelNics() override { return nics; }
  std::vector<HostCtl::Network::Pnic> ReadPnics() override { return {}; }
  bool ReadIpv6Enabled() override { return false; }
  HostSeam::DnsRecord ReadDns() override { return dns; }
  HostSeam::RoutingRecord ReadRouting() override { return {}; }
  std::string ReadWelcomeMessage() override { return {}; }
  int ReadBootOption() override { return 0; }
  std::optional<HostCtl::Adv::OptionValue> ReadOption(const std::string&) override { return {}; }
  std::vector<std::string> ReadKeyboardLayouts() override { return {}; }
  std::string ReadKeyboardLayout() override { return {}; }
  std::vector<HostCtl::System::FirewallRuleset> ReadFirewallRulesets() override { return {}; }
  std::vector<HostCtl::Authentication::SmartCardSlot> ReadSmartCardSlots() override {
    return slots;
  }
  void RaiseSystemAlert(const std::string&) override {}
};

/// Puts both under the program for one test, and ignores SIGPIPE as the program does.
class OnRecordingHost : public testing::Test {
 protected:
  OnRecordingHost();
  RecordingPlatform* platform;
  ValueDriver* driver;
};

}  // namespace TestSupport
