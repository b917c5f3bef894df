// SPDX-License-Identifier: MIT
#include "system/timeout_dialog.h"

#include "core/idle_timeout.h"
#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "system/timeout_value.h"
#include "ui/markup_text.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

constexpr int kWidth = 70;
constexpr int kFieldWidth = 10;

}  // namespace

InputItem& TimeoutDialog::AddMinutes(TextId label, std::int64_t minutes) {
  InputItem& field = AddField(Text(label), kFieldWidth);
  field.SetValue(std::to_string(minutes));
  return field;
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
                            .width = kWidth,
                            .height = 21,
                            .topHeight = 15}),
      shellFields_{MakeField(TextId::kAvailabilityTimeout, kShellAvailabilityTimeout),
                   MakeField(TextId::kIdleTimeout, kShellInteractiveTimeout)} {}

ShellTimeoutDialog::Field ShellTimeoutDialog::MakeField(TextId label, const ShellTimeout& timeout) {
  const std::int64_t minutes = readShellTimeout(timeout);
  return {timeout, minutes, AddMinutes(label, minutes)};
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
                            .width = kWidth,
                            .height = 14,
                            .topHeight = 9}),
      seconds_(readIdleTimeout()),
      input_(AddMinutes(TextId::kKivaIdleTimeout, seconds_ / kSecondsPerMinute)) {}

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
