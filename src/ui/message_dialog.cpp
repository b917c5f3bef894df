// SPDX-License-Identifier: MIT
#include "ui/message_dialog.h"

#include <algorithm>

#include "core/key_wait.h"
#include "core/keys.h"
#include "ui/footer.h"
#include "ui/markup_text.h"

namespace Kiva {

namespace {

constexpr int kWidth = 60;
constexpr int kWideWidth = 76;
constexpr int kMostLinesWhenNarrow = 10;

int widthFor(const std::string& body) {
  return countLines(body, kWidth - 6) > kMostLinesWhenNarrow ? kWideWidth : kWidth;
}

int heightFor(const std::string& body) {
  const int height = topHeightFor(body, widthFor(body)) + bottomHeightFor(0);
  return std::min(height, screenLines());
}

}  // namespace

AcknowledgeDialog::AcknowledgeDialog(Window& owner, const std::string& body)
    : AcknowledgeDialog(owner, widthFor(body), heightFor(body),
                        heightFor(body) - bottomHeightFor(0)) {}

AcknowledgeDialog::AcknowledgeDialog(Window& owner, int width, int height, int topHeight)
    : Dialog(owner, width, height, topHeight) {}

int AcknowledgeDialog::Foreground() {
  Fill();
  while (getKey(*this) != Key::kEnter) {
  }
  return 1;
}

MessageDialog::MessageDialog(Window& owner, TextId title, std::string body)
    : AcknowledgeDialog(owner, body), title_(title), body_(std::move(body)) {}

void MessageDialog::Fill() {
  SetTitle(Text(title_));
  SetText(body_);
  SetFooter(kOkFooter);
}

NotificationDialog::NotificationDialog(Window& owner, std::string title, std::string body)
    : AcknowledgeDialog(owner, body), title_(std::move(title)), body_(std::move(body)) {}

void NotificationDialog::Fill() {
  SetTitle(title_);
  SetText(body_);
  SetFooter(kOkFooter);
}

InfoDialog::InfoDialog(Window& owner, int width, int height, int topHeight)
    : AcknowledgeDialog(owner, width, height, topHeight) {
  if (Window* content = Content())
    details_ = &content->Add(std::make_unique<TextArea>(
        *content, Rect{0, 0, content->Width(), content->Height()}, kBlack));
}

void showMessage(Window& owner, TextId title, const std::string& body) {
  MessageDialog dialog(owner, title, body);
  runWindow(dialog);
}

}  // namespace Kiva
