// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace Picture {

/// A console font in the PSF version 2 format, plain or compressed with gzip, that has a table of
/// the characters that its glyphs stand for.
class Font {
 public:
  /// Throws std::runtime_error where the file is no such font.
  explicit Font(const std::filesystem::path& file);

  int Width() const { return width_; }
  int Height() const { return height_; }
  /// Whether the pixel of a character (in UTF-8) is set. A character that the font lacks is drawn
  /// as a question mark.
  bool IsSet(std::string_view character, int x, int y) const;

 private:
  std::uint32_t Number(std::size_t offset) const;
  void ReadCharacters(std::size_t offset);

  std::string bytes_;
  std::size_t glyphs_ = 0;  ///< Where the first glyph begins in `bytes_`.
  std::size_t glyphSize_ = 0;
  int width_ = 0;
  int height_ = 0;
  std::map<std::string, std::size_t, std::less<>> glyphOf_;
};

}  // namespace Picture
