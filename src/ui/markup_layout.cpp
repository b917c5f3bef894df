// SPDX-License-Identifier: MIT
#include "ui/markup_layout.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <optional>

#include "ui/markup_tag.h"
#include "ui/markup_text.h"
#include "ui/utf8.h"

namespace Kiva {

namespace {

bool isBlank(char byte) {
  return std::string_view(" \t\n\v\f\r").find(byte) != std::string_view::npos;
}

/// The number that the text begins with, 0 when there is none or it is negative.
int leadingNumber(std::string_view text) {
  const long number = std::strtol(std::string(text).c_str(), nullptr, 10);
  return static_cast<int>(std::clamp<long>(number, 0, INT_MAX));
}

class Layout {
 public:
  Layout(int width, const KeywordTable& keywords)
      : keywords_(keywords), width_(std::max(width, 0)), room_(width_) {}

  std::string LayOut(std::string_view markup);

 private:
  enum class Span { kNone, kRight, kCenter, kPadding };

  void TakeByte(char byte);
  void TakeBlank(char blank);
  void TakeGlyph(char glyph);
  void TakeContinuation(char byte);
  void Append(char byte);

  void BreakLine();
  void StartLine();
  void WrapAtBlank();

  void TakeTag(std::string_view text);
  void OpenSpan(std::string_view value);
  void CloseSpan();
  void ExpandKeyword(std::string_view value);

  bool FieldIsFull() const { return span_ == Span::kPadding && field_ == 0; }
  void FillField();
  void PushSpan(int columns);
  void InsertBlanks(int columns);
  void ForgetBlank();

  const KeywordTable& keywords_;
  const int width_;
  std::string out_;
  int room_;  // columns left on the line
  std::optional<std::size_t> lastBlank_;
  int sinceBlank_ = 0;  // columns appended since then, the blank included
  Span span_ = Span::kNone;
  std::size_t spanStart_ = 0;
  int field_ = 0;  // columns left in a padding field
  bool cutOff_ = false;
};

std::string Layout::LayOut(std::string_view markup) {
  const std::string repaired = repairedUtf8(markup);
  // Files with "\r\n" are read as if they had "\n" alone.
  std::string text;
  for (std::size_t at = 0; at < repaired.size(); ++at) {
    if (repaired[at] != '\r' || repaired[at + 1] != '\n') text += repaired[at];
  }
  walkMarkup(
      text,
      [this](char byte) {
        TakeByte(byte);
        return true;
      },
      [this](std::string_view tag) { TakeTag(tag); });
  return std::move(out_);
}

void Layout::TakeByte(char byte) {
  if (isContinuation(byte)) {
    TakeContinuation(byte);
  } else if (isBlank(byte)) {
    TakeBlank(byte);
  } else {
    TakeGlyph(byte);
  }
}

void Layout::TakeBlank(char blank) {
  if (room_ == 0) return BreakLine();
  if (!FieldIsFull()) {
    lastBlank_ = out_.size();
    sinceBlank_ = 0;
  }
  Append(blank);
  if (blank == '\n') StartLine();
}

void Layout::TakeGlyph(char glyph) {
  if (room_ == 0 && lastBlank_) {
    WrapAtBlank();
  } else if (room_ == 0) {
    BreakLine();
  }
  Append(glyph);
}

void Layout::TakeContinuation(char byte) {
  if (!cutOff_) out_ += byte;
}

void Layout::Append(char byte) {
  cutOff_ = FieldIsFull();
  if (cutOff_) return;
  out_ += byte;
  room_ = std::max(room_ - 1, 0);
  ++sinceBlank_;
  if (span_ == Span::kPadding) --field_;
}

void Layout::BreakLine() {
  out_ += '\n';
  StartLine();
}

void Layout::StartLine() {
  room_ = width_;
  spanStart_ = out_.size() + 1;  // one past the line's first character, see InsertBlanks
  ForgetBlank();
}

void Layout::WrapAtBlank() {
  const int moved = sinceBlank_;
  out_[*lastBlank_] = '\n';
  if (span_ == Span::kRight) InsertBlanks(moved);
  if (span_ == Span::kCenter) InsertBlanks(moved / 2);
  StartLine();
  room_ = std::max(width_ - (moved - 1), 0);  // the blank itself did not move down
}

void Layout::TakeTag(std::string_view text) {
  if (text.empty()) return;
  const MarkupTag tag = splitTag(text);
  if (tag.name == "align") {
    OpenSpan(tag.value);
  } else if (tag.name == "/align") {
    CloseSpan();
  } else if (const auto* value = keywords_.Find(text)) {
    ExpandKeyword((*value)());
  } else {
    out_.append(1, '{').append(text).append(1, '}');
  }
}

void Layout::OpenSpan(std::string_view value) {
  constexpr std::string_view kPadding = "padding:";
  if (span_ != Span::kNone) return;
  spanStart_ = out_.size();
  if (value == "right") {
    span_ = Span::kRight;
  } else if (value == "center") {
    span_ = Span::kCenter;
  } else if (value.starts_with(kPadding)) {
    span_ = Span::kPadding;
    field_ = leadingNumber(value.substr(kPadding.size()));
  }
}

void Layout::CloseSpan() {
  if (span_ == Span::kRight) PushSpan(room_);
  if (span_ == Span::kCenter) PushSpan(room_ / 2);
  if (span_ == Span::kPadding) FillField();
  span_ = Span::kNone;
}

void Layout::ExpandKeyword(std::string_view value) {
  for (const char byte : plainText(repairedUtf8(value))) {
    if (isContinuation(byte)) {
      TakeContinuation(byte);
      continue;
    }
    if (room_ == 0 && !FieldIsFull()) BreakLine();
    Append(byte);
  }
}

void Layout::FillField() {
  const int columns = std::min(field_, room_);
  out_.append(static_cast<std::size_t>(columns), ' ');
  room_ -= columns;
  sinceBlank_ += columns;
}

/// The rest of the line counts as used, so that the next character begins a new one.
void Layout::PushSpan(int columns) {
  InsertBlanks(columns);
  room_ = 0;
  ForgetBlank();
}

/// Blanks before the span. Its start may still lie behind what has been written, and inside a
/// character of several bytes.
void Layout::InsertBlanks(int columns) {
  std::size_t at = std::min(spanStart_, out_.size());
  while (at < out_.size() && isContinuation(out_[at])) ++at;
  out_.insert(at, static_cast<std::size_t>(columns), ' ');
}

void Layout::ForgetBlank() {
  lastBlank_.reset();
  sinceBlank_ = 0;
}

}  // namespace

std::string layOutMarkup(std::string_view markup, int width, const KeywordTable& keywords) {
  return Layout(width, keywords).LayOut(markup);
}

}  // namespace Kiva
