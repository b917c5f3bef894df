// SPDX-License-Identifier: MIT
#include "ui/message_dialog.h"

#include <algorithm>

#include "core/key_wait.h"
#include "ui/footer.h"
#include "ui/markup_text.h"

namespace Kiva {

struct AcknowledgeDialog::Size {
  int width, height;
};

namespace {

constexpr int kWidth = 60;
constexpr int kWideWidth = 76;
constexpr int kMostLinesWhenNarrow = 10;

}  // namespace

AcknowledgeDialog::Size AcknowledgeDialog::SizeFor(const std::string& body) {
  const bool wide = countLines(body, kWidth - 6) > kMostLinesWhenNarrow;
  const int width = wide ? kWideWidth : kWidth;
  return {width, std::min(topHeightFor(body, width) + bottomHeightFor(0), screenLines())};
}

AcknowledgeDialog::AcknowledgeDialog(Frame& owner, const std::string& body)
    : AcknowledgeDialog(owner, SizeFor(body)) {}

AcknowledgeDialog::AcknowledgeDialog(Frame& owner, Size size)
    : AcknowledgeDialog(owner, size.width, size.height, size.height - bottomHeightFor(0)) {}

AcknowledgeDialog::AcknowledgeDialog(Frame& owner, int width, int height, int topHeight)
    : Dialog(owner, width, height, topHeight) {}

int AcknowledgeDialog::Foreground() {
  Fill();
  waitForEnter(*this);
  return 1;
}

MessageDialog::MessageDialog(Frame& owner, TextId title, std::string body)
    : AcknowledgeDialog(owner, body), title_(title), body_(std::move(body)) {}

void MessageDialog::Fill() {
  SetTitle(Text(title_));
  SetText(body_);
  SetFooter(kOkFooter);
}

NotificationDialog::NotificationDialog(Frame& owner, std::string title, std::string body)
    : AcknowledgeDialog(owner, body), title_(std::move(title)), body_(std::move(body)) {}

void NotificationDialog::Fill() {
  SetTitle(title_);
  SetText(body_);
  SetFooter(kOkFooter);
}

InfoDialog::InfoDialog(Frame& owner, int width, int height, int topHeight)
    : AcknowledgeDialog(owner, width, height, topHeight) {
  if (Window* content = Content())
    details_ = &content->Make<TextArea>(Rect{0, 0, content->Width(), content->Height()}, kBlack, "",
                                        Overflow::Marked);
}

void showMessage(Frame& owner, TextId title, const std::string& body) {
  MessageDialog dialog(owner, title, body);
  runWindow(dialog);
}

}  // namespace Kiva
