// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <span>
#include <stdexcept>
#include <string>

namespace HostTools {

/// Arguments that a tool does not take; the text says which.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads `arguments` as options with a value each, exactly those named in `wanted` ("-u -v"), in
/// any order. Throws UsageError.
std::map<std::string, std::string> readOptions(std::span<const std::string> arguments,
                                               std::span<const char* const> wanted);

}  // namespace HostTools
