// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "hostseam/tool_host.h"

namespace HostTools {

/// An advanced option that operators may set: a whole number, what it may be, what it is where
/// nobody has set it, and what it does.
struct AdvancedOption {
  std::string_view path;
  std::int64_t least;
  std::int64_t most;
  std::int64_t standard;
  std::string_view about;
};

std::span<const AdvancedOption> advancedOptions();

/// Throws UsageError for a path that is no option's.
const AdvancedOption& optionAt(const std::string& path);

/// Reads `text` as a value of `option`. Throws UsageError with what it may be.
std::int64_t readValue(const AdvancedOption& option, const std::string& text);

/// The bare value that holds on `host`.
std::string valueOn(HostSeam::ToolHost& host, const AdvancedOption& option);

}  // namespace HostTools
