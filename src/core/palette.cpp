// SPDX-License-Identifier: MIT
#include "core/palette.h"

#include <curses.h>

#include <algorithm>

#include "core/terminal.h"

namespace Kiva {

namespace {

struct Redefinition {
  short slot, red, green, blue;
};

constexpr Redefinition kRedefinitions[] = {
    {kAmber, 1000, 800, 0},     {kDarkGrey, 334, 334, 334}, {kLightGrey, 667, 667, 667},
    {kWhite, 1000, 1000, 1000}, {kRed, 1000, 0, 0},
};

constexpr short kPairColors[] = {kWhite, kBlack, kAmber, kLightGrey, kDarkGrey, kRed};

// An attribute has eight bits for the pair, so more than eight colours must not spread the pairs
// out.
int pairNumber(Color background, Color foreground) {
  return foreground + background * std::min(COLORS, 8) + 1;
}

}  // namespace

Attribute colorAttribute(Color background, Color foreground) {
  if (!terminal().monochrome)
    return static_cast<Attribute>(COLOR_PAIR(pairNumber(background, foreground)));
  return background == kBlack || background == kDarkGrey ? A_STANDOUT : A_NORMAL;
}

void setUpColors() {
  use_default_colors();
  if (!can_change_color()) {
    terminal().monochrome = true;
    return;
  }
  for (const auto& [slot, red, green, blue] : kRedefinitions) init_color(slot, red, green, blue);
  for (const short background : kPairColors)
    for (const short foreground : kPairColors)
      init_pair(static_cast<short>(pairNumber(background, foreground)), foreground, background);
}

bool toggleMonochrome() {
  if (!can_change_color()) return false;
  terminal().monochrome = !terminal().monochrome;
  return true;
}

}  // namespace Kiva
