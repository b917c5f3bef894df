// SPDX-License-Identifier: MIT
#include "system/timeout_dialog.h"

#include "core/idle_timeout.h"
#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "system/timeout_value.h"
#include "ui/footer.h"
#include "ui/markup_text.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

constexpr int kWidth = 70;
constexpr int kFieldWidth = 10;

constexpr bool isDigit(int key) {
  return key >= '0' && key <= '9';
}

}  // namespace

TimeoutDialog::TimeoutDialog(Frame& owner, const Look& look)
    : Dialog(owner, kWidth, look.height, look.topHeight), look_(look) {
  Window& content = *Content();
  fields_ = &content.Make<ItemList>(Rect{0, 0, content.Width(), content.Height()});
}

InputItem& TimeoutDialog::AddField(TextId label, std::int64_t minutes) {
  InputItem& field = fields_->Append(std::make_unique<InputItem>(Text(label), kFieldWidth));
  field.SetValue(std::to_string(minutes));
  return field;
}

int TimeoutDialog::Foreground() {
  SetTitle(Text(look_.title));
  SetText(Text(look_.text));
  SetFooter(kOkCancelFooter);
  fields_->FocusStart();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 0;
    if (key == Key::kEnter) return Apply(), 1;
    Handle(key);
  }
}

void TimeoutDialog::Handle(int key) {
  if (key == Key::kUp) {
    fields_->MoveUp();
  } else if (key == Key::kDown) {
    fields_->MoveDown();
  } else if (isDigit(key) || Key::isEditing(key)) {
    fields_->Focused()->PressKey(key);
    fields_->Draw();
  }
}

std::optional<std::int64_t> TimeoutDialog::ChangedMinutes(const InputItem& field,
                                                          std::int64_t stored,
                                                          std::int64_t perMinute) {
  const std::int64_t minutes = parseNumber(field.Value());
  const TimeoutVerdict verdict = judgeTimeout(minutes, stored, perMinute);
  if (verdict == TimeoutVerdict::Refused)
    showMessage(*this, TextId::kInvalidTimeoutValue, Text(TextId::kTimeoutMustBeBetween));
  if (verdict != TimeoutVerdict::Changed) return std::nullopt;
  return minutes;
}

ShellTimeoutDialog::ShellTimeoutDialog(Frame& owner)
    : TimeoutDialog(owner, {.title = TextId::kSetShellTimeouts,
                            .text = TextId::kSetShellTimeoutMinutes,
                            .height = 21,
                            .topHeight = 15}),
      shellFields_{MakeField(TextId::kAvailabilityTimeout, kShellAvailabilityTimeout),
                   MakeField(TextId::kIdleTimeout, kShellInteractiveTimeout)} {}

ShellTimeoutDialog::Field ShellTimeoutDialog::MakeField(TextId label, const ShellTimeout& timeout) {
  const std::int64_t minutes = readShellTimeout(timeout);
  return {timeout, minutes, AddField(label, minutes)};
}

// A value that somebody else made larger than the console allows may stay.
void ShellTimeoutDialog::Apply() {
  for (const Field& field : shellFields_) {
    if (field.input.Value() == std::to_string(field.minutes)) continue;
    if (const auto minutes = ChangedMinutes(field.input, field.minutes, 1))
      storeShellTimeout(field.timeout, *minutes);
  }
}

KivaTimeoutDialog::KivaTimeoutDialog(Frame& owner)
    : TimeoutDialog(owner, {.title = TextId::kSetKivaIdleTimeout,
                            .text = TextId::kSetKivaIdleMinutes,
                            .height = 14,
                            .topHeight = 9}),
      seconds_(readIdleTimeout()),
      input_(AddField(TextId::kKivaIdleTimeout, seconds_ / kSecondsPerMinute)) {}

void KivaTimeoutDialog::Apply() {
  const auto minutes = ChangedMinutes(input_, seconds_, kSecondsPerMinute);
  if (minutes) Store(*minutes);
}

void KivaTimeoutDialog::Store(std::int64_t minutes) try {
  storeIdleTimeout(minutes * kSecondsPerMinute);
  logTimeout("Kiva timeout", minutes);
} catch (const HostCtl::Lib::HostCtlException& exception) {
  logError("%s", exception.what());
  showMessage(*this, TextId::kOperationFailed, plainText(exception.what()));
}

}  // namespace Kiva
