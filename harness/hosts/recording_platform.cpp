// SPDX-License-Identifier: MIT
#include "harness/hosts/recording_platform.h"

#include <csignal>

#include "hostctl/lib/exception.h"

namespace TestSupport {

using HostCtl::Lib::Program;

std::vector<std::string> RecordingPlatform::Lines() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

void RecordingPlatform::Clear() {
  const std::lock_guard lock(mutex_);
  lines_.clear();
}

void RecordingPlatform::Record(std::string line) {
  const std::lock_guard lock(mutex_);
  lines_.push_back(std::move(line));
}

std::string RecordingPlatform::HostPath(std::string_view path) const {
  return (root / path.substr(1)).string();
}

Program RecordingPlatform::ChildProgram(const Program& program) {
  std::string line = "run " + program.path;
  for (const std::string& argument : program.arguments) line += " " + argument;
  Record(line);
  const auto script = scripts.find(program.path);
  if (script == scripts.end()) return program;
  if (script->second.empty()) return {"/no/such/tool", program.arguments};
  Program shell{"/bin/sh", {"sh", "-c", script->second}};
  shell.arguments.insert(shell.arguments.end(), program.arguments.begin(), program.arguments.end());
  return shell;
}

void RecordingPlatform::Log(int priority, const std::string& line) {
  Record("log." + std::to_string(priority) + " " + line);
}

int RecordingPlatform::EventAdd(const std::string& text) {
  Record("event " + text);
  return 0;
}

void RecordingPlatform::Audit(const HostCtl::Lib::AuditRecord& record) {
  std::string line = "audit " + record.event + " " + record.user + (record.success ? " 1" : " 0");
  for (const auto& [name, value] : record.pairs) line += " " + name + "=" + value;
  Record(line);
}

void ValueDriver::Enter(std::string_view operation) {
  if (operation == failing) throw HostCtl::Lib::HostCtlException("out of order");
}

OnRecordingHost::OnRecordingHost() {
  auto newPlatform = std::make_unique<RecordingPlatform>();
  auto newDriver = std::make_unique<ValueDriver>();
  platform = newPlatform.get();
  driver = newDriver.get();
  HostSeam::useHost(std::move(newPlatform), std::move(newDriver));
  std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace TestSupport
