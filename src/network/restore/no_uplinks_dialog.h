// SPDX-License-Identifier: MIT
#pragma once

#include "ui/message_dialog.h"

namespace Kiva {

/// Tells why the port of a distributed switch without uplinks is not repaired.
class NoUplinksDialog : public MessageDialog {
 public:
  explicit NoUplinksDialog(Frame& owner)
      : MessageDialog(owner, TextId::kNoXdsUplinksError,
                      catalogueText(TextId::kNoUplinksConfigured)) {}
};

}  // namespace Kiva
