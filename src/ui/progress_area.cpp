// SPDX-License-Identifier: MIT
#include "ui/progress_area.h"

#include "core/screen.h"

namespace Kiva {

void ProgressArea::Begin(const std::string& step) {
  SetText(steps_ + "{color:black}" + step + "{/color}");
  steps_ += step + "\n";
  updateScreen();
}

}  // namespace Kiva
