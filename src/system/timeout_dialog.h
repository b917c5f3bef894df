// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "core/keys.h"
#include "system/shell_timeouts.h"
#include "ui/field_dialog.h"

namespace Kiva {

/// Asks for time-outs in minutes, one field each, and applies them on Enter (1); Escape leaves them
/// as they are (0). The dialogs below say which and how.
class TimeoutDialog : public FieldDialog {
 protected:
  TimeoutDialog(Frame& owner, const Look& look) : FieldDialog(owner, look) {}

  /// Adds a field below the others that shows `minutes`.
  InputItem& AddMinutes(TextId label, std::int64_t minutes);
  /// Acts on what the fields hold now.
  virtual void Apply() = 0;
  /// The minutes to store instead of `stored`, in units of which `perMinute` are a minute; nothing
  /// where they are the same, or refused, which the operator is told.
  std::optional<std::int64_t> ChangedMinutes(const InputItem& field, std::int64_t stored,
                                             std::int64_t perMinute);

 private:
  bool Takes(int key) const override { return Key::isDigit(key); }
  bool Accept() override { return Apply(), true; }
};

/// The time-outs of the host's shells.
class ShellTimeoutDialog : public TimeoutDialog {
 public:
  explicit ShellTimeoutDialog(Frame& owner);

 private:
  struct Field {
    const ShellTimeout& timeout;
    /// As it was when the dialog opened.
    std::int64_t minutes;
    InputItem& input;
  };
  Field MakeField(TextId label, const ShellTimeout& timeout);
  void Apply() override;

  const std::array<Field, 2> shellFields_;
};

/// The console's own idle time-out.
class KivaTimeoutDialog : public TimeoutDialog {
 public:
  explicit KivaTimeoutDialog(Frame& owner);

 private:
  void Apply() override;
  void Store(std::int64_t minutes);

  /// As they were when the dialog opened.
  const std::int64_t seconds_;
  InputItem& input_;
};

}  // namespace Kiva
