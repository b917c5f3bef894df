// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/auth/smart_card.h"

namespace TarnCtl::Authentication {

class SmartCardInfoImpl : public HostCtl::Authentication::SmartCardInfo {
 public:
  std::vector<HostCtl::Authentication::SmartCardSlot> GetAllSlots() override;
  std::optional<HostCtl::Authentication::SmartCardToken> GetToken(
      const HostCtl::Authentication::SmartCardSlot& slot) override;
};

}  // namespace TarnCtl::Authentication
