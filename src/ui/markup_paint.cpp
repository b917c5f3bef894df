// SPDX-License-Identifier: MIT
#include "ui/markup_paint.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "ui/markup_tag.h"
#include "ui/utf8.h"

namespace Kiva {

namespace {

constexpr std::array<std::pair<std::string_view, Color>, 6> kColorNames = {{
    {"white", kWhite},
    {"black", kBlack},
    {"dark-grey", kDarkGrey},
    {"light-grey", kLightGrey},
    {"yellow", kAmber},
    {"red", kRed},
}};

std::optional<Color> colorNamed(std::string_view name) {
  const auto* found = std::find_if(kColorNames.begin(), kColorNames.end(),
                                   [&](const auto& entry) { return entry.first == name; });
  if (found == kColorNames.end()) return std::nullopt;
  return found->second;
}

bool isControl(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f;
}

/// Well-formed text without control characters; those of two bytes, U+0080 to U+009F, included.
std::string showable(std::string_view text) {
  std::string shown;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\xc2' && static_cast<unsigned char>(text[at + 1]) < 0xa0) {
      shown += ' ';
      ++at;
    } else {
      shown += isControl(text[at]) ? ' ' : text[at];
    }
  }
  return shown;
}

class Painter {
 public:
  explicit Painter(const PaintArea& area)
      : area_(area),
        own_(area.active ? Pair{area.background, area.foreground}
                         : Pair{kInactiveBackground, kInactiveForeground}),
        current_{area.background, area.foreground},
        shown_(own_) {}

  std::vector<Run> Paint(std::string_view laidOut);

 private:
  struct Pair {
    Color background;
    Color foreground;
  };

  bool TakeByte(char byte);
  void TakeTag(std::string_view text);
  void OpenColor(Color Pair::*which, bool& open, std::string_view name);
  void CloseColor(bool& open);
  void WriteRun();

  const PaintArea& area_;
  const Pair own_;
  Pair current_;  // the colours last set; closing a tag does not take them back
  Pair shown_;    // the colours that text is written in
  bool colorOpen_ = false;
  bool backgroundOpen_ = false;
  int row_ = 0;
  int column_ = 0;
  std::string run_;
  std::vector<Run> runs_;
};

std::vector<Run> Painter::Paint(std::string_view laidOut) {
  if (area_.width <= 0 || area_.height <= 0) return {};
  walkMarkup(
      laidOut, [this](char byte) { return TakeByte(byte); },
      [this](std::string_view tag) { TakeTag(tag); });
  run_.resize(firstColumns(run_, area_.width - column_).size());
  WriteRun();
  return std::move(runs_);
}

bool Painter::TakeByte(char byte) {
  if (byte != '\n') {
    run_ += byte;
    return true;
  }
  WriteRun();
  column_ = 0;
  ++row_;
  return row_ < area_.height;
}

void Painter::TakeTag(std::string_view text) {
  const MarkupTag tag = splitTag(text);
  if (tag.name == "color") {
    OpenColor(&Pair::foreground, colorOpen_, tag.value);
  } else if (tag.name == "bgcolor") {
    OpenColor(&Pair::background, backgroundOpen_, tag.value);
  } else if (tag.name == "/color") {
    CloseColor(colorOpen_);
  } else if (tag.name == "/bgcolor") {
    CloseColor(backgroundOpen_);
  }
}

void Painter::OpenColor(Color Pair::*which, bool& open, std::string_view name) {
  WriteRun();
  open = true;
  const auto color = colorNamed(name);
  if (!color) return;
  current_.*which = *color;
  if (area_.active) shown_ = current_;
}

/// Back to the area's own pair, even while the other kind of span is still open.
void Painter::CloseColor(bool& open) {
  if (!open) return;
  WriteRun();
  shown_ = own_;
  open = false;
}

void Painter::WriteRun() {
  const int columns = columnCount(run_);
  if (columns > 0 && column_ < area_.width) {
    runs_.push_back({row_, column_, showable(run_), shown_.background, shown_.foreground});
  }
  column_ += columns;
  run_.clear();
}

}  // namespace

std::vector<Run> paintMarkup(std::string_view laidOut, const PaintArea& area) {
  return Painter(area).Paint(repairedUtf8(laidOut));
}

}  // namespace Kiva
