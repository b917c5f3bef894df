// SPDX-License-Identifier: MIT
#pragma once

#include "core/window.h"

namespace Kiva {

/// Where the parts of the welcome screen lie: the two areas on the screen, the texts in their
/// areas.
struct WelcomeLayout {
  Rect top, bottom;
  Rect banner, hardware, processors;
  Rect management, warning, footer;
};

/// What the screen needs to show everything.
inline constexpr int kFullColumns = 80;
inline constexpr int kFullLines = 24;

/// The layout for a screen of this size. A warning takes its rows from the management text where
/// the bottom area has not enough for both.
WelcomeLayout layOutWelcome(int columns, int lines, bool warns);

}  // namespace Kiva
