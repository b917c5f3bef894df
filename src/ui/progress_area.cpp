// SPDX-License-Identifier: MIT
#include "ui/progress_area.h"

#include "core/screen.h"
#include "ui/markup_text.h"

namespace Kiva {

void ProgressArea::Ask(const std::string& question) {
  steps_.clear();
  SetText(question);
}

void ProgressArea::Begin(const std::string& step) {
  while (!steps_.empty() && countLines(steps_ + step, Width()) > Height())
    steps_.erase(0, steps_.find('\n') + 1);
  SetText(steps_ + "{color:black}" + step + "{/color}");
  steps_ += step + "\n";
  updateScreen();
}

}  // namespace Kiva
