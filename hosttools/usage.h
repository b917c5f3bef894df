// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace HostTools {

/// Arguments that a tool does not take; the text says which.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The values of a call by the option or operand that took them: "-v" or "ADDRESS". A flag has an
/// empty value.
using Values = std::map<std::string, std::string>;

/// A tool's arguments without its name.
using Arguments = std::span<const std::string>;

/// Which usage was called, and with what.
struct Choice {
  std::size_t index = 0;
  Values values;
};

/// Finds the usage that `arguments` follow. A usage reads as it does in a help text:
///
///   system settings list [-o PATH]
///
/// Lower-case words and numbers stand as they are, in their order. "-o PATH" is an option with a
/// value, "-w" without an upper-case word behind it a flag, "PATH" alone an operand; brackets make
/// them optional. Options and flags may stand anywhere. An argument is at most 255 bytes long, not
/// empty, and has no control characters.
///
/// Throws UsageError with the reason of the usage that came nearest.
Choice chooseUsage(const std::vector<std::string_view>& usages, Arguments arguments);

/// The value of `option` that a call gives as a whole number within the limits, both included.
/// Throws UsageError with the option's name.
std::int64_t readNumber(std::string_view option, const std::string& text, std::int64_t least,
                        std::int64_t most);

}  // namespace HostTools
