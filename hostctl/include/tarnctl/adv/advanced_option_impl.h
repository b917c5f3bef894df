// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "hostctl/adv/advanced_option.h"

namespace TarnCtl::Adv {

class AdvancedOptionImpl {
 public:
  /// The option at `path`, as an integer or a string option, or null when the host has none there.
  static std::unique_ptr<HostCtl::Adv::AdvancedOption> FindOption(const std::string& path);
};

}  // namespace TarnCtl::Adv
