// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace HostCtl::Authentication {

/// A card in a reader, readable without its PIN. `userId` is the account that the card stands for.
struct SmartCardToken {
  std::string label;
  std::string userId;
};

struct SmartCardSlot {
  std::string name;
  std::optional<SmartCardToken> token;
};

/// The card readers of the host. Both operations throw HostCtlException when the host fails them.
class SmartCardInfo {
 public:
  virtual ~SmartCardInfo() = default;
  virtual std::vector<SmartCardSlot> GetAllSlots() = 0;
  virtual std::optional<SmartCardToken> GetToken(const SmartCardSlot& slot) = 0;
};

}  // namespace HostCtl::Authentication
