// SPDX-License-Identifier: MIT
#include "ui/input_editor.h"

#include <string.h>

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>

#include "core/keys.h"
#include "ui/utf8.h"

namespace Kiva {

namespace {

/// Room for the usual password, so that typing one never moves it about in memory.
constexpr std::size_t kUsualLength = 128;

/// The brackets of the field with the blanks around them.
constexpr int kFrameColumns = 5;

std::string blanks(int count) {
  return std::string(static_cast<std::size_t>(std::max(count, 0)), ' ');
}

}  // namespace

InputEditor::InputEditor(std::string label, int fieldWidth, Masking masking)
    : label_(std::move(label)), fieldWidth_(fieldWidth), masking_(masking) {
  value_.reserve(kUsualLength);
}

InputEditor::~InputEditor() {
  Wipe();
}

void InputEditor::SetValue(std::string_view value, Selection selection) {
  assert(value.data() < value_.data() || value.data() > value_.data() + value_.size());
  Clear();
  for (const char character : value) Insert(character);
  fresh_ = selection == Selection::kWhole;
}

void InputEditor::Key(int key) {
  const bool wasFresh = std::exchange(fresh_, false);
  switch (key) {
    case Key::kHome:
      cursor_ = offset_ = 0;
      return;
    case Key::kEnd:
      cursor_ = Length();
      return;
    case Key::kLeft:
      return MoveLeft();
    case Key::kRight:
      cursor_ = std::min(cursor_ + 1, Length());
      return;
    case Key::kDelete:
      return wasFresh ? Clear() : Delete();
    case Key::kBackspace:
    case Key::kBackspaceByte:
      return wasFresh ? Clear() : DeleteBack();
    default:
      if (wasFresh) Clear();
      if (IsPrintable(key)) Insert(static_cast<char>(key));
  }
}

void InputEditor::Scroll(int fieldWidth) {
  fieldWidth = std::max(fieldWidth, 0);
  if (Length() < fieldWidth) {
    offset_ = 0;
  } else if (cursor_ - offset_ > fieldWidth) {
    offset_ = cursor_ - fieldWidth;
  }
}

std::string InputEditor::Line(int areaWidth, bool focused) {
  const int fieldWidth = FieldWidth(areaWidth);
  Scroll(fieldWidth);
  const int labelWidth = areaWidth - kFrameColumns - fieldWidth;
  const std::string shown = Shown(fieldWidth);
  std::string line(firstColumns(label_, labelWidth));
  line += blanks(labelWidth - columnCount(line)) + " [ ";
  if (focused) line += fresh_ ? "{bgcolor:white}{color:black}" : "{bgcolor:black}{color:white}";
  line += shown;
  if (focused) line += "{/color}{/bgcolor}";
  return line + blanks(fieldWidth - static_cast<int>(shown.size())) + " ]";
}

int InputEditor::CursorColumn(int areaWidth) const {
  const int column = areaWidth - 2 - FieldWidth(areaWidth) + cursor_ - offset_;
  return std::clamp(column, 0, std::max(areaWidth - 1, 0));
}

int InputEditor::FieldWidth(int areaWidth) const {
  const int wanted = fieldWidth_ < 0 ? areaWidth / 2 - 1 : fieldWidth_;
  return std::clamp(wanted, 0, std::max(areaWidth - kFrameColumns, 0));
}

std::string InputEditor::Shown(int fieldWidth) const {
  const int count = std::min(Length() - offset_, fieldWidth);
  if (masking_ == Masking::kStars) return std::string(static_cast<std::size_t>(count), '*');
  return value_.substr(static_cast<std::size_t>(offset_), static_cast<std::size_t>(count));
}

void InputEditor::MoveLeft() {
  if (cursor_ == 0) return;
  if (cursor_ == offset_) --offset_;
  --cursor_;
}

void InputEditor::Delete() {
  if (cursor_ < Length()) value_.erase(static_cast<std::size_t>(cursor_), 1);
  if (value_.empty()) noCoreFile_.Lift();
}

/// Where the cursor leaves the visible part to the left, it jumps to the end of the value.
void InputEditor::DeleteBack() {
  if (cursor_ == 0) return;
  --cursor_;
  Delete();
  if (cursor_ >= offset_) return;
  offset_ = 0;
  cursor_ = Length();
}

void InputEditor::Insert(char character) {
  if (masking_ == Masking::kStars) noCoreFile_.Impose();
  MakeRoom();
  value_.insert(static_cast<std::size_t>(cursor_), 1, character);
  ++cursor_;
}

void InputEditor::Clear() {
  Wipe();
  noCoreFile_.Lift();
  cursor_ = offset_ = 0;
}

bool InputEditor::IsPrintable(int key) const {
  return (key >= 32 && key <= 126) || (masking_ == Masking::kStars && key >= 128 && key <= 255);
}

void InputEditor::MakeRoom() {
  if (value_.size() < value_.capacity()) return;
  std::string larger;
  larger.reserve(2 * value_.capacity());
  larger = value_;
  Wipe();
  value_.swap(larger);
}

void InputEditor::Wipe() {
  value_.resize(value_.capacity());
  explicit_bzero(value_.data(), value_.size());
  value_.clear();
}

}  // namespace Kiva
