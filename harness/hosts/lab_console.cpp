// SPDX-License-Identifier: MIT
#include "harness/hosts/lab_console.h"

namespace HostLinux {

namespace {

using Harness::Launch;

Launch kivaIn(const NetworkLab& lab, LabConsole::Escape escape) {
  lab.InstallTools(matrixModule());
  return {{KIVA_BUILD_DIR "/bin/kiva"},
          "xterm-256color",
          {{"ESCDELAY", std::to_string(static_cast<int>(escape))}}};
}

}  // namespace

std::string LabConsole::Obstacle() {
  if (matrixModule().empty()) return "no pam_matrix.so (package libpam-wrapper)";
  return NetworkLab::Obstacle();
}

LabConsole::LabConsole(const NetworkLab& lab, Escape escape)
    : Terminal(kivaIn(lab, escape), {24, 80}) {
  WaitFor("Shut Down/Restart");
}

void LabConsole::LogIn() {
  Do({"F2", "wait:Authentication Required", "Enter", "type:secret", "Enter",
      "wait:System Customization"});
}

}  // namespace HostLinux
