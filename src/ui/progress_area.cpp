// SPDX-License-Identifier: MIT
#include "ui/progress_area.h"

#include <algorithm>

#include "core/screen.h"

namespace Kiva {

void ProgressArea::Ask(const std::string& question) {
  steps_.clear();
  SetText(question);
}

void ProgressArea::Begin(const std::string& step) {
  if (std::count(steps_.begin(), steps_.end(), '\n') >= Height())
    steps_.erase(0, steps_.find('\n') + 1);
  SetText(steps_ + "{color:black}" + step + "{/color}");
  steps_ += step + "\n";
  updateScreen();
}

}  // namespace Kiva
