// SPDX-License-Identifier: MIT
#include "harness/emulator.h"

namespace Harness {
namespace {

int colourOf(const VTermColor& colour, std::uint8_t isDefault) {
  if ((colour.type & isDefault) != 0) return kDefaultColour;
  if (VTERM_COLOR_IS_INDEXED(&colour)) return colour.indexed.idx;
  return kDirectColour | colour.rgb.red << 16 | colour.rgb.green << 8 | colour.rgb.blue;
}

Cell cellOf(const VTermScreenCell& from) {
  constexpr std::uint32_t kRightHalf = 0xffffffff;  // of a double-width character
  Cell cell;
  if (from.chars[0] != 0) cell.text.clear();
  for (const std::uint32_t c : from.chars) {
    if (c == 0 || c == kRightHalf) break;
    cell.text += utf8(c);
  }
  cell.colours = {colourOf(from.fg, VTERM_COLOR_DEFAULT_FG),
                  colourOf(from.bg, VTERM_COLOR_DEFAULT_BG)};
  cell.reverse = from.attrs.reverse != 0;
  cell.bold = from.attrs.bold != 0;
  return cell;
}

}  // namespace

Emulator::Emulator(Size size)
    : vterm_(vterm_new(size.rows, size.columns)),
      screen_(vterm_obtain_screen(vterm_.get())),
      properties_(std::make_unique<Properties>()) {
  static const VTermScreenCallbacks kCallbacks = {.damage = nullptr,
                                                  .moverect = nullptr,
                                                  .movecursor = nullptr,
                                                  .settermprop = OnProperty,
                                                  .bell = nullptr,
                                                  .resize = nullptr,
                                                  .sb_pushline = nullptr,
                                                  .sb_popline = nullptr};
  vterm_set_utf8(vterm_.get(), 1);
  vterm_screen_set_callbacks(screen_, &kCallbacks, properties_.get());
  vterm_screen_enable_altscreen(screen_, 1);
  vterm_screen_reset(screen_, 1);
}

int Emulator::OnProperty(VTermProp property, VTermValue* value, void* self) {
  if (property == VTERM_PROP_CURSORVISIBLE) {
    static_cast<Properties*>(self)->cursorVisible = value->boolean != 0;
  }
  return 1;
}

void Emulator::Write(std::string_view bytes) {
  vterm_input_write(vterm_.get(), bytes.data(), bytes.size());
}

void Emulator::Resize(Size size) {
  vterm_set_size(vterm_.get(), size.rows, size.columns);
}

Screen Emulator::Look() const {
  Size size;
  vterm_get_size(vterm_.get(), &size.rows, &size.columns);
  Screen screen(size);
  for (int row = 0; row < size.rows; ++row) {
    for (int column = 0; column < size.columns; ++column) {
      VTermScreenCell cell;
      vterm_screen_get_cell(screen_, {row, column}, &cell);
      screen.At(row, column) = cellOf(cell);
    }
  }
  VTermPos cursor;
  vterm_state_get_cursorpos(vterm_obtain_state(vterm_.get()), &cursor);
  screen.cursor = {cursor.row, cursor.col};
  screen.cursorVisible = properties_->cursorVisible;
  return screen;
}

}  // namespace Harness
