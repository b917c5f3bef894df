// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "harness/hosts/network_lab.h"
#include "harness/terminal.h"

namespace HostLinux {

/// kiva as the console of a lab's machine, at a terminal of 80 x 24 cells; its host tools are those
/// of the build. Its operator is root.
class LabConsole : public Harness::Terminal {
 public:
  /// Why there can be none here; empty where there can.
  static std::string Obstacle();

  /// Shows the welcome screen. `escape` is how many milliseconds pass until an Escape is a key of
  /// its own: curses' own time, or a short one.
  enum class Escape { Usual = 1000, Quick = 25 };
  explicit LabConsole(const NetworkLab& lab, Escape escape = Escape::Quick);

  /// From the welcome screen to the System Customization menu.
  void LogIn();
};

}  // namespace HostLinux
