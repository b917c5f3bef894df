// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace HostCtl::Lib {

/// A program to start: its absolute path, and its argument vector with the short name first.
struct Program {
  std::string path;
  std::vector<std::string> arguments;
  bool operator==(const Program&) const = default;
};

/// One record of the host's audit trail. `pairs` are name and value, in the order they are written.
struct AuditRecord {
  std::string event;
  std::string user;
  bool success = false;
  std::vector<std::pair<std::string, std::string>> pairs;
};

/// Everything that leaves the program other than through the host-control classes: files, children,
/// log lines, events, audit records, the authentication stack. One implementation a host; the
/// program reaches the one in use through platform().
class Platform {
 public:
  virtual ~Platform() = default;

  /// Where the file that the host knows as `path` (absolute) lies on this machine.
  virtual std::string HostPath(std::string_view path) const = 0;
  /// What to execute so that the host runs `program` as a child without the terminal.
  virtual Program ChildProgram(const Program& program) = 0;
  /// The same for a program that takes the terminal over while it runs (the pager). File names
  /// among its arguments have been through HostPath already.
  virtual Program TerminalProgram(const Program& program) = 0;

  /// Whether name resolution, the hosts file included, finds an address for `name` (getaddrinfo
  /// with the flags for a canonical name and configured families only). May take long; for any
  /// thread.
  virtual bool ResolveName(const std::string& name) = 0;

  /// Opens the system log with identity "KIVA", process id, facility user, up to informational.
  virtual void OpenLog() = 0;
  /// Writes one line; `priority` is syslog's, a facility included where it is not user.
  virtual void Log(int priority, const std::string& line) = 0;

  /// The event library: status 0 on success, as Init and Add report it.
  virtual int EventInit() = 0;
  virtual int EventAdd(const std::string& text) = 0;
  virtual void EventClose() = 0;
  virtual void Audit(const AuditRecord& record) = 0;

  /// The folder of PAM service files, or nothing for the system's own.
  virtual std::optional<std::string> PamServiceDirectory() const = 0;
};

/// The platform that the program runs on; set once, before anything else uses the library.
Platform& platform();

}  // namespace HostCtl::Lib
