// SPDX-License-Identifier: MIT
#include "src/enter.h"
#include "tarnctl/adv/advanced_option_impl.h"

namespace TarnCtl::Adv {

using namespace HostCtl::Adv;

namespace {

class StoredIntegerOption : public AdvancedIntegerOption {
 public:
  using AdvancedIntegerOption::AdvancedIntegerOption;
  void SetValue(std::int64_t value) override {
    enter("SetOption").WriteOption(GetPath(), value);
    AdvancedIntegerOption::SetValue(value);
  }
};

}  // namespace

std::unique_ptr<AdvancedOption> AdvancedOptionImpl::FindOption(const std::string& path) {
  const std::optional<OptionValue> value = enter("FindOption").ReadOption(path);
  if (!value) return nullptr;
  if (const auto* number = std::get_if<std::int64_t>(&*value))
    return std::make_unique<StoredIntegerOption>(path, *number);
  return std::make_unique<AdvancedStringOption>(path, std::get<std::string>(*value));
}

}  // namespace TarnCtl::Adv
