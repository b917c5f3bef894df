// SPDX-License-Identifier: MIT
#include "src/enter.h"
#include "tarnctl/auth/smart_card_info_impl.h"

namespace TarnCtl::Authentication {

using namespace HostCtl::Authentication;

std::vector<SmartCardSlot> SmartCardInfoImpl::GetAllSlots() {
  return enter("GetAllSlots").ReadSmartCardSlots();
}

std::optional<SmartCardToken> SmartCardInfoImpl::GetToken(const SmartCardSlot& slot) {
  enter("GetToken");
  return slot.token;
}

}  // namespace TarnCtl::Authentication
