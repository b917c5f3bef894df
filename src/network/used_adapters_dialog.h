// SPDX-License-Identifier: MIT
#pragma once

#include "ui/question_dialog.h"

namespace Kiva {

/// Asks whether adapters may be taken from the connections that use them.
class UsedAdaptersDialog : public QuestionDialog {
 public:
  explicit UsedAdaptersDialog(Frame& owner)
      : QuestionDialog(owner, TextId::kNetworkAdaptersWarning, TextId::kSelectedAdaptersAreUsed,
                       TextId::kRemoveAdaptersFromConnections) {}
};

}  // namespace Kiva
