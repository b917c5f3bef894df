// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Kiva {

/// A host tool to run: everything that the console changes outside the host-control library, it
/// changes by running one. Tools write little, and what they are given to read is short too: both
/// must fit a pipe, because the input is written before the wait and the output read after it.
struct Command {
  /// Absolute; no search path is consulted.
  std::string path;
  /// The short name first.
  std::vector<std::string> arguments;
  /// What the tool finds on its standard input, before the end of file.
  std::string_view input = {};
  /// How many bytes of standard output and of standard error are kept; 0 keeps none.
  std::size_t outputCapacity = 0;
  std::size_t errorCapacity = 0;
  /// 0 or less waits for ever.
  int timeOutSeconds = 0;
};

/// `status` is the exit code 0 to 255, or -1 for a tool that could not be started or did not end by
/// itself. The texts are empty where nothing was started, kept or readable.
struct CommandResult {
  int status = -1;
  std::string output = {};
  std::string errors = {};
  /// The errno of a start that failed, else 0.
  int startError = 0;
};

/// Runs a tool and waits for its end. It starts in a session of its own, with default signals, no
/// descriptor but its three and the environment PYTHONHOME=/ alone. When its time is over it is
/// killed together with its process group. May be called from two threads at once; the program
/// ignores SIGPIPE and leaves SIGCHLD at its default.
CommandResult RunCommand(const Command& command);

}  // namespace Kiva
