// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hostctl/auth/smart_card.h"
#include "linux/loadable_module.h"

namespace HostLinux {

/// The one function of the module kiva-smartcard.so, found by this name. Fills `slots` and answers
/// true, or says in `error` what the card library answered.
inline constexpr const char* kSmartCardSlotsSymbol = "kivaSmartCardSlots";
using SmartCardSlotsFunction = bool (*)(std::vector<HostCtl::Authentication::SmartCardSlot>& slots,
                                        std::string& error);

/// The card readers of the host, through the PKCS#11 modules that its p11-kit is configured for.
/// The module is loaded when they are first asked for; without it, or without p11-kit, there are
/// none.
class SmartCards {
 public:
  /// Throws HostCtlException when the card library fails.
  std::vector<HostCtl::Authentication::SmartCardSlot> Read();

 private:
  Module module_{"kiva-smartcard"};
};

}  // namespace HostLinux
