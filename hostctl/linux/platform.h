// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/lib/platform.h"

namespace HostLinux {

/// This machine as it is: its own files, its own programs, its system log.
///
/// Events and audit records are lines of the system log, for whatever collects it: an event is its
/// text at priority notice with facility user; an audit record is, at priority notice with facility
/// authpriv, a line such as
///
///   audit login.disconnect user="root" outcome=1 reason="Session closed"
///
/// A host whose system log does not listen has no event library.
class LinuxPlatform : public HostCtl::Lib::Platform {
 public:
  std::string HostPath(std::string_view path) const override { return std::string(path); }
  bool ResolveName(const std::string& name) override;
  HostCtl::Lib::Program ChildProgram(const HostCtl::Lib::Program& program) override {
    return program;
  }
  HostCtl::Lib::Program TerminalProgram(const HostCtl::Lib::Program& program) override {
    return program;
  }

  /// Lines logged before carry the C library's own identity.
  void OpenLog() override;
  void Log(int priority, const std::string& line) override;

  /// Answers `errno` of the log's socket when that is not there.
  int EventInit() override;
  int EventAdd(const std::string& text) override;
  void EventClose() override {}
  void Audit(const HostCtl::Lib::AuditRecord& record) override;

  std::optional<std::string> PamServiceDirectory() const override { return std::nullopt; }
};

/// The line of an audit record. What stands in quotes has its quotes and backslashes escaped, and
/// control characters replaced, so that no value can look like another pair or another line.
std::string auditLine(const HostCtl::Lib::AuditRecord& record);

}  // namespace HostLinux
