// SPDX-License-Identifier: MIT
#include "core/idle_timeout.h"

#include "hostctl/lib/exception.h"
#include "tarnctl/adv/advanced_option_impl.h"

namespace Kiva {

namespace {

using HostCtl::Adv::AdvancedIntegerOption;
using HostCtl::Lib::HostCtlException;

constexpr std::int64_t kDefault = 600;
constexpr const char* kOption = "/UserVars/KivaTimeOut";

/// Null when the option is missing or no number.
std::unique_ptr<AdvancedIntegerOption> findOption() {
  auto option = TarnCtl::Adv::AdvancedOptionImpl::FindOption(kOption);
  auto* integer = dynamic_cast<AdvancedIntegerOption*>(option.get());
  if (integer) static_cast<void>(option.release());
  return std::unique_ptr<AdvancedIntegerOption>(integer);
}

}  // namespace

std::int64_t readIdleTimeout() {
  try {
    const auto option = findOption();
    return option ? option->GetValue() : kDefault;
  } catch (const HostCtlException&) {
    return kDefault;
  }
}

void storeIdleTimeout(std::int64_t seconds) {
  const auto option = findOption();
  if (!option) throw HostCtlException("SetOption", kOption, "the host has no such number");
  option->SetValue(seconds);
}

}  // namespace Kiva
