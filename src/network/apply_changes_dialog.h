// SPDX-License-Identifier: MIT
#pragma once

#include "ui/dialog.h"

namespace Kiva {

/// Asks what becomes of the pending changes when the operator leaves the network window.
class ApplyChangesDialog : public Dialog {
 public:
  enum class Answer { Yes, No, Cancel };

  /// `ipv6Toggled`: the changes take a restart of the host, not of the management network only.
  ApplyChangesDialog(Frame& owner, bool ipv6Toggled);
  /// 0 for Cancel.
  int Foreground() override;
  Answer GetAnswer() const { return answer_; }

 private:
  Answer Ask();

  Answer answer_ = Answer::Cancel;
};

}  // namespace Kiva
