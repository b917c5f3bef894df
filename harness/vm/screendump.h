// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace Harness {

/// A colour as it lights up on the screen, 0 to 255 each.
struct Rgb {
  int red = 0;
  int green = 0;
  int blue = 0;

  auto operator<=>(const Rgb&) const = default;
};

/// Whether two colours look the same: a VGA screen has six bits of each part.
bool looksLike(const Rgb& one, const Rgb& other);

/// The pixels of a screen.
class Screendump {
 public:
  /// Reads a PPM file with one byte a colour; throws std::runtime_error when it is none.
  explicit Screendump(const std::filesystem::path& ppm);

  /// All colours within a cell of a text screen of 80 x 25 cells.
  std::set<Rgb> ColoursOfCell(int row, int column) const;

 private:
  Rgb At(int x, int y) const;

  int width_ = 0;
  int height_ = 0;
  std::string pixels_;
};

}  // namespace Harness
