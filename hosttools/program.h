// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosttools/tool.h"

namespace HostTools {

// What the programs that hold the tools have in common.

/// Runs the tool that the program was called for and returns its exit status. `program` is the name
/// that it was called by (argv[0]): the name of a tool, through a link, means that tool, and
/// `arguments` are the tool's own. By any other name the first argument is the path of a tool, and
/// the tool's own follow; --help there lists all tools. The outputs are written to the program's,
/// each cut, where it is a pipe, at half of what the pipe holds. A tool that takes longer than it
/// may ends the program with status 124.
int runProgram(ToolHost& host, std::string_view program, const std::vector<std::string>& arguments);
int runProgram(StandInHost& host, std::string_view program,
               const std::vector<std::string>& arguments);

/// Ends the process with status 124, and a line about `name`, once `seconds` are over.
void boundTime(const std::string& name, int seconds);

}  // namespace HostTools
