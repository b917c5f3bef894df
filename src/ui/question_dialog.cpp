// SPDX-License-Identifier: MIT
#include "ui/question_dialog.h"

#include "core/key_wait.h"
#include "core/keys.h"
#include "ui/footer.h"

namespace Kiva {

QuestionDialog::QuestionDialog(Frame& owner, TextId title, TextId warning, TextId question)
    : Dialog(owner, 70, 11, 6), title_(title), warning_(warning) {
  Window& content = *Content();
  content.Make<TextArea>(Rect{0, 0, content.Width(), 1}, kParentColor, Text(question));
}

int QuestionDialog::Foreground() {
  SetTitle(Text(title_));
  SetText(Text(warning_));
  SetFooter(kOkCancelFooter);
  return waitForConfirmation(*this, Key::kEnter);
}

}  // namespace Kiva
