// SPDX-License-Identifier: MIT
#include "demo/arguments.h"

#include <charconv>

namespace Demo {

namespace {

constexpr int kFastest = 100000;

int readSpeed(const std::string& text) {
  int speed = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), speed);
  if (error != std::errc() || end != text.data() + text.size() || speed < 1 || speed > kFastest)
    throw ArgumentError("--clock-speed takes a number from 1 to " + std::to_string(kFastest));
  return speed;
}

}  // namespace

Arguments readArguments(std::span<char* const> arguments) {
  Arguments read;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string argument = arguments[i];
    if (argument == "--help" || argument == "-h") {
      read.help = true;
    } else if (argument == "--host") {
      if (++i == arguments.size()) throw ArgumentError("--host needs a directory");
      read.host = arguments[i];
    } else if (argument == "--clock-speed") {
      read.clockSpeed = readSpeed(++i < arguments.size() ? arguments[i] : "");
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
