// SPDX-License-Identifier: MIT
#include "harness/output_filter.h"

#include <cstdio>
#include <cstdlib>

namespace Harness {
namespace {

constexpr std::string_view kIntroducer = "\033]";
constexpr std::string_view kStringTerminator = "\033\\";

}  // namespace

std::string OutputFilter::Pass(std::string_view output) {
  std::string passed;
  for (const char byte : output) {
    held_ += byte;
    if (held_.size() <= kIntroducer.size()) {
      if (kIntroducer.starts_with(held_)) continue;
      // Of "ESC ESC" the second may begin a command.
      const bool again = held_.size() > 1 && byte == '\033';
      passed += again ? held_.substr(0, held_.size() - 1) : held_;
      held_ = again ? "\033" : "";
    } else if (IsComplete()) {
      Take();
      held_.clear();
    }
  }
  return passed;
}

bool OutputFilter::IsComplete() const {
  constexpr std::size_t kLinuxColourLength = 10;  // ESC ] P n rr gg bb
  switch (held_[2]) {
    case 'R':
      return true;
    case 'P':
      return held_.size() == kLinuxColourLength;
    default:
      return held_.back() == '\a' || held_.ends_with(kStringTerminator);
  }
}

void OutputFilter::Take() {
  std::string_view command = held_;
  command.remove_prefix(kIntroducer.size());
  if (command.starts_with('P')) {
    const std::string digits(command.substr(1));
    Record({std::stoi(digits.substr(0, 1), nullptr, 16),
            static_cast<std::uint32_t>(std::stoul(digits.substr(1), nullptr, 16))});
    return;
  }
  if (command != "R") command.remove_suffix(command.ends_with('\a') ? 1 : 2);
  if (command == "R" || command == "104") Record({});
  if (command.starts_with("4;")) TakeXtermColours(command.substr(2));
  if (command.starts_with("K;")) marker_ = command.substr(2);
}

void OutputFilter::TakeXtermColours(std::string_view arguments) {
  int slot = 0;
  unsigned red = 0;
  unsigned green = 0;
  unsigned blue = 0;
  const std::string text(arguments);
  if (std::sscanf(text.c_str(), "%d;rgb:%2x/%2x/%2x", &slot, &red, &green, &blue) == 4) {
    Record({slot, red << 16 | green << 8 | blue});
  }
}

void OutputFilter::Record(PaletteChange change) {
  changes_.push_back(change);
  if (change.slot == PaletteChange::kWholePalette) {
    palette_.fill(std::nullopt);
  } else {
    palette_.at(change.slot) = change.rgb;
  }
}

}  // namespace Harness
