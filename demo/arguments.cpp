// SPDX-License-Identifier: MIT
#include "demo/arguments.h"

namespace Demo {

Arguments readArguments(std::span<char* const> arguments) {
  Arguments read;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string argument = arguments[i];
    if (argument == "--help" || argument == "-h") {
      read.help = true;
    } else if (argument == "--host") {
      if (++i == arguments.size()) throw ArgumentError("--host needs a directory");
      read.host = arguments[i];
    } else if (argument.starts_with('-')) {
      throw ArgumentError("unknown option " + argument);
    } else if (read.virtualTerminal) {
      throw ArgumentError("one virtual terminal is enough: " + argument);
    } else {
      read.virtualTerminal = argument;
    }
  }
  return read;
}

}  // namespace Demo
