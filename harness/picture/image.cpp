// SPDX-License-Identifier: MIT
#include "harness/picture/image.h"

#include <png.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace Picture {
namespace {

using Harness::Cell;
using Harness::OutputFilter;
using Harness::Screen;

constexpr std::uint32_t kConsoleColours[16] = {
    0x000000, 0xaa0000, 0x00aa00, 0xaa5500, 0x0000aa, 0xaa00aa, 0x00aaaa, 0xaaaaaa,
    0x555555, 0xff5555, 0x55ff55, 0xffff55, 0x5555ff, 0xff55ff, 0x55ffff, 0xffffff};
constexpr int kDefaultForeground = 7;
constexpr int kDefaultBackground = 0;

std::uint32_t rgbOf(int colour, int byDefault, const OutputFilter& palette) {
  if ((colour & Harness::kDirectColour) != 0 && colour > 0) return colour & 0xffffff;
  const int slot = colour == Harness::kDefaultColour ? byDefault : colour;
  return palette.Redefined(slot).value_or(kConsoleColours[slot % 16]);
}

struct Ink {
  std::uint32_t glyph;
  std::uint32_t ground;
};

Ink inkOf(const Cell& cell, const OutputFilter& palette) {
  Ink ink{rgbOf(cell.colours.foreground, kDefaultForeground, palette),
          rgbOf(cell.colours.background, kDefaultBackground, palette)};
  if (cell.reverse) std::swap(ink.glyph, ink.ground);
  return ink;
}

void setPixel(Image& image, int x, int y, std::uint32_t rgb) {
  std::uint8_t* pixel = &image.pixels[(static_cast<std::size_t>(y) * image.width + x) * 3];
  for (int i = 0; i < 3; ++i) pixel[i] = static_cast<std::uint8_t>(rgb >> (16 - 8 * i));
}

}  // namespace

Image draw(const Screen& screen, const OutputFilter& palette, const Font& font) {
  const auto [rows, columns] = screen.GetSize();
  Image image{columns * font.Width(), rows * font.Height(), {}};
  image.pixels.resize(static_cast<std::size_t>(image.width) * image.height * 3);
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const Harness::Position at{y / font.Height(), x / font.Width()};
      const Cell& cell = screen.At(at.row, at.column);
      const Ink ink = inkOf(cell, palette);
      const bool underCursor =
          screen.cursorVisible && at == screen.cursor && y % font.Height() >= font.Height() * 7 / 8;
      const bool set = font.IsSet(cell.text, x % font.Width(), y % font.Height());
      setPixel(image, x, y, set != underCursor ? ink.glyph : ink.ground);
    }
  }
  return image;
}

void writePng(const Image& image, const std::filesystem::path& file) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = image.width;
  png.height = image.height;
  png.format = PNG_FORMAT_RGB;
  if (png_image_write_to_file(&png, file.c_str(), 0, image.pixels.data(), 0, nullptr) == 0) {
    throw std::runtime_error(file.string() + ": " + png.message);
  }
}

}  // namespace Picture
