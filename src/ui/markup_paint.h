// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/palette.h"

namespace Kiva {

/// What the paint pass needs to know of a text area: its size in cells, its own colours, and
/// whether it is active.
struct PaintArea {
  int width = 0;
  int height = 0;
  Color background = kBlack;
  Color foreground = kWhite;
  bool active = true;
};

/// A piece of text in one pair of colours, and the cell of the area where it begins.
struct Run {
  int row = 0;
  int column = 0;
  std::string text;
  Color background = kBlack;
  Color foreground = kWhite;
  bool operator==(const Run&) const = default;
};

/// The second of the two passes that draw a text: what the text area has to write, in this order,
/// to show what layOutMarkup made. A later run may cover cells of an earlier one.
///
/// Every run begins inside the area; only the last line's end is cut at the right edge, so a run
/// may be longer than the rest of its row and then goes on in the next one, as curses writes it.
/// Texts are well-formed UTF-8 without control characters: a control character is one blank here,
/// a byte that begins no character one '?'. In an inactive area all runs are dark grey on
/// black.
std::vector<Run> paintMarkup(std::string_view laidOut, const PaintArea& area);

}  // namespace Kiva
