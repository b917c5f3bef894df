// SPDX-License-Identifier: MIT
#include "harness/vm/screendump.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "harness/screen.h"

namespace Harness {

bool looksLike(const Rgb& one, const Rgb& other) {
  constexpr int kTolerance = 4;
  const auto near = [](int a, int b) { return std::abs(a - b) <= kTolerance; };
  return near(one.red, other.red) && near(one.green, other.green) && near(one.blue, other.blue);
}

Screendump::Screendump(const std::filesystem::path& ppm) {
  std::ifstream file(ppm, std::ios::binary);
  std::string magic;
  int maximum = 0;
  file >> magic >> width_ >> height_ >> maximum;
  file.get();
  pixels_.resize(static_cast<std::size_t>(width_) * height_ * 3);
  file.read(pixels_.data(), static_cast<std::streamsize>(pixels_.size()));
  if (!file || magic != "P6" || maximum != 255)
    throw std::runtime_error(ppm.string() + " is no picture of a screen");
}

Rgb Screendump::At(int x, int y) const {
  const std::size_t at = (static_cast<std::size_t>(y) * width_ + x) * 3;
  const auto part = [&](int i) { return static_cast<unsigned char>(pixels_.at(at + i)); };
  return {part(0), part(1), part(2)};
}

std::set<Rgb> Screendump::ColoursOfCell(int row, int column) const {
  const Size cells;
  const int width = width_ / cells.columns;
  const int height = height_ / cells.rows;
  std::set<Rgb> colours;
  for (int y = row * height; y < (row + 1) * height; ++y)
    for (int x = column * width; x < (column + 1) * width; ++x) colours.insert(At(x, y));
  return colours;
}

}  // namespace Harness
