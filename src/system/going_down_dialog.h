// SPDX-License-Identifier: MIT
#pragma once

#include "system/host_tools.h"
#include "ui/dialog.h"

namespace Kiva {

/// Takes the host down and shows that it goes: stops the virtual machines, runs the host's command
/// and stays until the host ends the program. Keys do nothing then; only the idle time-out leads
/// out. Its result is 0, for a command that could not be started.
class GoingDownDialog : public Dialog {
 public:
  int Foreground() override;

 protected:
  /// What a dialog of this kind says, and the line that the shell runs.
  struct Way {
    TextId title;
    TextId text;
    const char* command;
  };
  GoingDownDialog(Frame& owner, const Way& way, VmStop machines);

 private:
  Way way_;
  VmStop machines_;
};

/// Shuts the host down; asks nothing.
class ShutdownConfirmDialog : public GoingDownDialog {
 public:
  ShutdownConfirmDialog(Frame& owner, VmStop machines);
};

/// Restarts the host; asks nothing.
class RebootConfirmDialog : public GoingDownDialog {
 public:
  RebootConfirmDialog(Frame& owner, VmStop machines);
};

/// Each notes in the log and as an event that the operator takes the host down, and runs its dialog
/// over `owner`. They return only where the host's command could not be started.
void shutDownHost(Frame& owner, VmStop machines);
void rebootHost(Frame& owner, VmStop machines);

}  // namespace Kiva
