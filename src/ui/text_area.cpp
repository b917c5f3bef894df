// SPDX-License-Identifier: MIT
#include "ui/text_area.h"

#include "ui/keyword_table.h"
#include "ui/markup_layout.h"
#include "ui/markup_paint.h"

namespace Kiva {

TextArea::TextArea(Window& parent, const Rect& place, Color foreground, std::string text)
    : Window(parent, place, kParentColor, foreground), text_(std::move(text)) {}

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
  for (const Run& run : paintMarkup(layOutMarkup(text_, Width(), keywordTable()), area))
    Print(run.column, run.row, run.text, run.background, run.foreground);
  Refresh();
}

}  // namespace Kiva
