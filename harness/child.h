// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Harness {

/// A program to start on a terminal. Of this process's environment it gets only what it needs to
/// run (PATH, HOME, the options of the sanitizers); `term` and `environment` come on top.
struct Launch {
  std::vector<std::string> arguments;                  ///< The first is the program's path.
  std::optional<std::string> term = "xterm-256color";  ///< TERM, unset when absent.
  std::map<std::string, std::string> environment = {};
};

/// A running program that leads a session of its own on a terminal; it is killed and reaped when
/// this object goes.
class Child {
 public:
  /// Starts the program with its three standard descriptors on `terminal`, which becomes its
  /// controlling terminal. Throws std::system_error when it cannot start.
  Child(const Launch& launch, const std::filesystem::path& terminal);
  Child(Child&& other) noexcept
      : pid_(std::exchange(other.pid_, 0)), status_(std::exchange(other.status_, {})) {}
  ~Child() { Stop(); }

  pid_t Pid() const { return pid_; }
  /// The exit status once the program has ended, minus the signal's number when one killed it.
  std::optional<int> Ended();
  void Signal(int number) const;
  /// Kills and reaps the program if it still runs.
  void Stop();

 private:
  pid_t pid_;
  std::optional<int> status_;
};

}  // namespace Harness
