// SPDX-License-Identifier: MIT
#pragma once

#include "ui/dialog.h"

namespace Kiva {

/// Warns of what the operator is about to do and asks whether it shall be done: 1 for Enter, 0 for
/// Escape.
class QuestionDialog : public Dialog {
 public:
  int Foreground() override;

 protected:
  QuestionDialog(Frame& owner, TextId title, TextId warning, TextId question);

 private:
  const TextId title_, warning_;
};

}  // namespace Kiva
