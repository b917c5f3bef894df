// SPDX-License-Identifier: MIT
// Lays hostile markup out, paints it, and checks what the text area relies on.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "ui/markup_layout.h"
#include "ui/markup_paint.h"
#include "ui/markup_tag.h"
#include "ui/utf8.h"

using namespace Kiva;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

KeywordTable keywords() {
  KeywordTable table;
  table.Register("k", [] { return "some value"; });
  table.Register("u", [] { return "\u00e4\u20ac\x80 {b}\n\t"; });
  table.Register("e", [] { return ""; });
  return table;
}

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

/// The widest that a line may be: a span that wraps may double one line, and a field may cut any
/// number of line breaks off.
int widestLine(std::string_view markup, int width) {
  if (contains(markup, "{align:padding")) return static_cast<int>(markup.size()) * 10 + width;
  return std::max(width, 1) * (contains(markup, "{align:") ? 2 : 1);
}

/// Columns of the widest line outside tags; keyword values may hold line breaks of their own, which
/// only make lines shorter.
int columnsOfWidestLine(std::string_view laidOut) {
  int widest = 0;
  int columns = 0;
  walkMarkup(
      laidOut,
      [&](char byte) {
        columns = byte == '\n' ? 0 : columns + (isContinuation(byte) ? 0 : 1);
        widest = std::max(widest, columns);
        return true;
      },
      [](std::string_view) {});
  return widest;
}

void checkRun(const Run& run, const PaintArea& area) {
  require(run.row >= 0 && run.row < area.height);
  require(run.column >= 0 && run.column < area.width);
  require(!run.text.empty() && repairedUtf8(run.text) == run.text);
  require(std::none_of(run.text.begin(), run.text.end(), [](char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f;
  }));
  require(area.active || (run.background == kBlack && run.foreground == kDarkGrey));
}

void checkPaint(std::string_view text, const PaintArea& area) {
  const auto runs = paintMarkup(text, area);
  for (const Run& run : runs) checkRun(run, area);
  require(std::is_sorted(runs.begin(), runs.end(), [](const Run& one, const Run& other) {
    return one.row != other.row ? one.row < other.row : one.column < other.column;
  }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  static const KeywordTable table = keywords();
  const int width = data[0] % 160 - 4;
  const PaintArea area{width, data[1] % 40 - 2, kAmber, kWhite, data[2] % 2 == 0};
  const std::string_view markup(reinterpret_cast<const char*>(data) + 3, size - 3);

  const std::string laidOut = layOutMarkup(markup, width, table);
  require(columnsOfWidestLine(laidOut) <= widestLine(markup, width));
  require(repairedUtf8(laidOut) == laidOut);
  checkPaint(laidOut, area);
  checkPaint(markup, area);
  return 0;
}
