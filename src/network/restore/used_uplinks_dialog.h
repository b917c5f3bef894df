// SPDX-License-Identifier: MIT
#pragma once

#include "ui/question_dialog.h"

namespace Kiva {

/// Warns of a choice of uplinks that is valid and hardly meant.
class UsedUplinksDialog : public QuestionDialog {
 public:
  UsedUplinksDialog(Frame& owner, TextId text)
      : QuestionDialog(owner, TextId::kXdsUplinksWarning, text, TextId::kDoYouWantToContinue) {}
};

}  // namespace Kiva
