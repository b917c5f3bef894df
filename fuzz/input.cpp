// SPDX-License-Identifier: MIT
// Any keys typed into an input field of any width. Its line must stay within its area, and the
// cursor too.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/keys.h"
#include "ui/input_editor.h"

namespace {

constexpr int kSpecialKeys[] = {Kiva::Key::kBackspace, Kiva::Key::kDelete, Kiva::Key::kLeft,
                                Kiva::Key::kRight,     Kiva::Key::kHome,   Kiva::Key::kEnd,
                                Kiva::Key::kUp,        Kiva::Key::kResize, -1};

int keyFrom(std::uint8_t byte) {
  constexpr std::uint8_t kFirstSpecial = 0xf0;
  if (byte < kFirstSpecial) return byte;
  return kSpecialKeys[(byte - kFirstSpecial) % std::size(kSpecialKeys)];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  const int fieldWidth = data[0] % 42 - 1;
  const int areaWidth = data[1] % 90;
  const bool masked = (data[2] & 1) != 0;
  Kiva::InputEditor editor(std::string(data[2] / 2, 'L'), fieldWidth,
                           masked ? Kiva::Masking::kStars : Kiva::Masking::kNone);
  editor.SetValue("root");
  for (std::size_t i = 3; i < size; ++i) {
    editor.Key(keyFrom(data[i]));
    editor.Line(areaWidth, true);
    const int cursor = editor.CursorColumn(areaWidth);
    if (cursor < 0 || (areaWidth > 0 && cursor >= areaWidth)) std::abort();
  }
  return 0;
}
