// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "harness/hosts/network_lab.h"
#include "harness/terminal.h"

namespace HostLinux {

/// kiva as the console of a lab's machine, at a terminal of 80 x 24 cells on which a lone Escape is
/// known within 25 ms; its host tools are those of the build. Its operator is root.
class LabConsole : public Harness::Terminal {
 public:
  /// Why there can be none here; empty where there can.
  static std::string Obstacle();

  /// Shows the welcome screen.
  explicit LabConsole(const NetworkLab& lab);

  /// From the welcome screen to the System Customization menu.
  void LogIn();
};

}  // namespace HostLinux
