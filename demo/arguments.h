// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <stdexcept>
#include <string>

namespace Demo {

/// What kiva-demo was called with.
struct Arguments {
  bool help = false;
  std::optional<std::string> host;
  std::optional<std::string> virtualTerminal;
  int clockSpeed = 1;
};

/// A call that makes no sense; the text is one line that says why.
class ArgumentError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads the arguments without the program's name. Whether the terminal is a number is the
/// console's business.
Arguments readArguments(std::span<char* const> arguments);

}  // namespace Demo
