// SPDX-License-Identifier: MIT
#include "ui/text_area.h"

#include "ui/keyword_table.h"
#include "ui/markup_layout.h"
#include "ui/markup_paint.h"
#include "ui/utf8.h"

namespace Kiva {

TextArea::TextArea(Window& parent, const Rect& place, Color foreground, std::string text,
                   Overflow overflow)
    : Window(parent, place, kParentColor, foreground),
      text_(std::move(text)),
      overflow_(overflow) {}

void TextArea::SetText(std::string text) {
  text_ = std::move(text);
  Draw();
}

void TextArea::AppendText(const std::string& text) {
  text_ += text;
  Draw();
}

void TextArea::Draw() {
  Erase();
  const PaintArea area{Width(), Height(), BackgroundColor(), ForegroundColor(), IsActive()};
  std::string laidOut = layOutMarkup(text_, Width(), keywordTable());
  if (overflow_ == Overflow::Marked) laidOut = cutLines(laidOut, Height(), Width());
  for (const Run& run : paintMarkup(laidOut, area))
    Print(run.column, run.row, run.text, run.background, run.foreground);
  Refresh();
}

}  // namespace Kiva
