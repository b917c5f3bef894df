// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/dialog.h"
#include "ui/item_list.h"
#include "ui/progress_area.h"

namespace Kiva {

/// Restarts the host's management agents once the operator has confirmed it with F11 (1), with a
/// live core of the main one where that is wanted; Escape leaves them alone (0).
class RestartAgentsDialog : public Dialog {
 public:
  explicit RestartAgentsDialog(Frame& owner);
  int Foreground() override;

 private:
  bool Confirm();
  void Restart();
  void Step(TextId text, const std::string& line);

  ProgressArea* progress_ = nullptr;
  ItemList* items_ = nullptr;
  CheckItem* collect_ = nullptr;
};

}  // namespace Kiva
