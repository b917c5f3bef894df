// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "harness/output_filter.h"
#include "harness/picture/font.h"
#include "harness/screen.h"

namespace Picture {

/// Pixels of red, green and blue, row by row.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;
};

/// Draws a screen as it stands before an operator: in the palette as the program has redefined it,
/// the slots that it left alone in the Linux console's own colours.
Image draw(const Harness::Screen& screen, const Harness::OutputFilter& palette, const Font& font);

/// Writes a PNG file; throws std::runtime_error when it cannot.
void writePng(const Image& image, const std::filesystem::path& file);

}  // namespace Picture
