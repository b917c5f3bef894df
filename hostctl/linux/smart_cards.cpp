// SPDX-License-Identifier: MIT
#include "linux/smart_cards.h"

#include "hostctl/lib/exception.h"

namespace HostLinux {

std::vector<HostCtl::Authentication::SmartCardSlot> SmartCards::Read() {
  std::vector<HostCtl::Authentication::SmartCardSlot> slots;
  const auto read = module_.Find<SmartCardSlotsFunction>(kSmartCardSlotsSymbol);
  std::string error;
  if (read && !read(slots, error))
    throw HostCtl::Lib::HostCtlException("GetAllSlots", "smart-card readers", error);
  return slots;
}

}  // namespace HostLinux
