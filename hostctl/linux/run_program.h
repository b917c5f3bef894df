// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

#include "hostctl/lib/platform.h"

namespace HostLinux {

/// How a program of the machine ended: its exit status, or -1 when it could not be started, did not
/// end by itself or not in time. `output` is what it wrote to both its outputs, as much as was
/// asked for; for a program that gave no status it says why.
struct ProgramResult {
  int status = -1;
  std::string output;
};

/// Runs a program of the machine, its input empty, and kills it, with what it started, when it has
/// not ended within `limit`. What the driver and the tools cannot do through a library they do
/// through this.
ProgramResult runProgram(const HostCtl::Lib::Program& program, std::chrono::milliseconds limit,
                         std::size_t mostOutput = 4096);

/// The first line of what `result` says that is no warning, for the text of an exception.
std::string causeOf(const ProgramResult& result);

}  // namespace HostLinux
