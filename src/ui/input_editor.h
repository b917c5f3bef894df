// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "core/core_file_ban.h"

namespace Kiva {

/// What an input field shows of its value.
enum class Masking { kNone, kStars };

/// Whether a value put in from outside is selected, so that the next typed character replaces it.
enum class Selection { kWhole, kNone };

/// The editing state of a one-line input field, and the line of markup that shows it. The input
/// item owns one, feeds it keys and draws its line; which keys reach it is the dialog's choice. The
/// value may be a password, so it leaves no bytes behind when it is replaced or the editor goes,
/// and a masked one no core file while it is there.
class InputEditor {
 public:
  /// `fieldWidth` in columns; -1 means half of the area that the field is drawn in, minus 1.
  InputEditor(std::string label, int fieldWidth, Masking masking);
  ~InputEditor();
  InputEditor(const InputEditor&) = delete;
  InputEditor& operator=(const InputEditor&) = delete;

  /// Puts a value in with the cursor at its end.
  void SetValue(std::string_view value, Selection selection = Selection::kWhole);
  const std::string& Value() const { return value_; }

  /// Edits by a key code of core/keys.h. A masked field takes bytes from 128 too.
  void Key(int key);

  /// Scrolls as far as a field of this many columns needs to show the cursor. Line does it too.
  void Scroll(int fieldWidth);
  /// The field as one line of markup, `areaWidth` columns wide: the label, cut where it has no
  /// room, and the field at the right edge. The value goes in as it is, tags and all.
  std::string Line(int areaWidth, bool focused);
  /// Where the terminal cursor belongs in the line that Line gave last for this width.
  int CursorColumn(int areaWidth) const;

 private:
  int FieldWidth(int areaWidth) const;
  std::string Shown(int fieldWidth) const;
  int Length() const { return static_cast<int>(value_.size()); }

  void MoveLeft();
  void Delete();
  void DeleteBack();
  void Insert(char character);
  void Clear();
  bool IsPrintable(int key) const;
  void MakeRoom();
  void Wipe();

  std::string label_;
  int fieldWidth_;
  Masking masking_;
  std::string value_;
  int cursor_ = 0;
  int offset_ = 0;
  bool fresh_ = false;
  CoreFileBan noCoreFile_;
};

}  // namespace Kiva
