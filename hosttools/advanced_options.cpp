// SPDX-License-Identifier: MIT
#include "hosttools/advanced_options.h"

#include <algorithm>
#include <array>

#include "hosttools/usage.h"

namespace HostTools {

namespace {

constexpr std::int64_t kDay = 86400;

constexpr std::array<AdvancedOption, 4> kOptions = {{
    {"/UserVars/KivaTimeOut", 0, kDay, 600,
     "seconds without a key until a session of the console ends; 0 for never"},
    {"/UserVars/HaloShellTimeOut", 0, kDay, 0,
     "seconds for which the shells let people log in after they were enabled; 0 for ever"},
    {"/UserVars/HaloShellInteractiveTimeOut", 0, kDay, 0,
     "seconds without a key until a shell logs its user out; 0 for never"},
    {"PXEBootEnabled", 0, 1, 0, "1 for a host that was booted over the network"},
}};

}  // namespace

std::span<const AdvancedOption> advancedOptions() {
  return kOptions;
}

const AdvancedOption& optionAt(const std::string& path) {
  const auto* found = std::find_if(kOptions.begin(), kOptions.end(),
                                   [&](const AdvancedOption& one) { return one.path == path; });
  if (found == kOptions.end()) throw UsageError("no such option: " + path);
  return *found;
}

std::int64_t readValue(const AdvancedOption& option, const std::string& text) {
  return readNumber(option.path, text, option.least, option.most);
}

std::string valueOn(HostSeam::ToolHost& host, const AdvancedOption& option) {
  const auto value = host.ReadOption(std::string(option.path));
  if (!value) return std::to_string(option.standard);
  if (const auto* number = std::get_if<std::int64_t>(&*value)) return std::to_string(*number);
  return std::get<std::string>(*value);
}

}  // namespace HostTools
