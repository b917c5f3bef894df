// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/lib/platform.h"

/// A platform without a machine: what the program logs goes nowhere, and it starts nothing.
class SilentPlatform : public HostCtl::Lib::Platform {
 public:
  using Program = HostCtl::Lib::Program;

  std::string HostPath(std::string_view path) const override { return std::string(path); }
  Program ChildProgram(const Program&) override { return {}; }
  Program TerminalProgram(const Program&) override { return {}; }
  void OpenLog() override {}
  void Log(int, const std::string&) override {}
  int EventInit() override { return 0; }
  int EventAdd(const std::string&) override { return 0; }
  void EventClose() override {}
  void Audit(const HostCtl::Lib::AuditRecord&) override {}
  std::optional<std::string> PamServiceDirectory() const override { return std::nullopt; }
};
