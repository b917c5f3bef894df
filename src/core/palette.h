// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// Colour numbers of the console's palette; setUpColors gives the terminal their looks. A window
/// that is told kParentColor takes its parent's.
using Color = int;
inline constexpr Color kParentColor = -1;
inline constexpr Color kBlack = 0;
inline constexpr Color kRed = 1;
inline constexpr Color kLightGrey = 2;
inline constexpr Color kAmber = 3;
inline constexpr Color kDarkGrey = 6;
inline constexpr Color kWhite = 7;

/// What every window looks like while a dialog covers it or the screen is dimmed.
inline constexpr Color kInactiveBackground = kBlack;
inline constexpr Color kInactiveForeground = kDarkGrey;

/// A curses attribute.
using Attribute = unsigned;

/// The attribute of text in these colours. A monochrome terminal shows standout on black and dark
/// grey, plain text elsewhere.
Attribute colorAttribute(Color background, Color foreground);

/// Redefines the terminal's palette and defines the pairs; a terminal that cannot redefine colours
/// makes the console monochrome instead. Called once, by startScreen.
void setUpColors();

/// Switches between the colours and the standout-only look; false, and nothing done, on a terminal
/// that has only one of the two.
bool toggleMonochrome();

}  // namespace Kiva
