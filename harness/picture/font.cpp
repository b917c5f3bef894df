// SPDX-License-Identifier: MIT
#include "harness/picture/font.h"

#include <zlib.h>

#include <memory>
#include <stdexcept>

namespace Picture {
namespace {

constexpr std::string_view kMagic = "\x72\xb5\x4a\x86";
constexpr std::size_t kHeaderSize = 32;
constexpr std::uint32_t kHasCharacterTable = 1;
constexpr char kEndOfGlyph = '\xff';
constexpr char kSequence = '\xfe';

std::string readCompressed(const std::filesystem::path& file) {
  const std::unique_ptr<gzFile_s, int (*)(gzFile)> in(gzopen(file.c_str(), "rb"), gzclose);
  if (!in) throw std::runtime_error("cannot read " + file.string());
  std::string all;
  char block[4096];
  for (int size = 0; (size = gzread(in.get(), block, sizeof block)) > 0;) all.append(block, size);
  return all;
}

std::size_t lengthOfUtf8(char first) {
  const auto byte = static_cast<unsigned char>(first);
  return byte < 0xc0 ? 1 : byte < 0xe0 ? 2 : byte < 0xf0 ? 3 : 4;
}

}  // namespace

Font::Font(const std::filesystem::path& file) : bytes_(readCompressed(file)) {
  if (bytes_.size() < kHeaderSize || !bytes_.starts_with(kMagic) ||
      (Number(12) & kHasCharacterTable) == 0) {
    throw std::runtime_error(file.string() + " is not a PSF 2 font with a character table");
  }
  glyphs_ = Number(8);
  glyphSize_ = Number(20);
  height_ = static_cast<int>(Number(24));
  width_ = static_cast<int>(Number(28));
  const std::size_t table = glyphs_ + Number(16) * glyphSize_;
  if (table > bytes_.size()) throw std::runtime_error(file.string() + " is cut off");
  ReadCharacters(table);
}

std::uint32_t Font::Number(std::size_t offset) const {
  std::uint32_t number = 0;
  for (int i = 3; i >= 0; --i)
    number = number << 8 | static_cast<unsigned char>(bytes_[offset + i]);
  return number;
}

void Font::ReadCharacters(std::size_t offset) {
  std::size_t glyph = 0;
  bool inSequence = false;  // of combining characters, which a cell of ours never holds
  while (offset < bytes_.size()) {
    const char byte = bytes_[offset];
    const std::size_t length = byte == kEndOfGlyph || byte == kSequence ? 1 : lengthOfUtf8(byte);
    if (byte == kEndOfGlyph) ++glyph;
    if (byte == kEndOfGlyph || byte == kSequence) {
      inSequence = byte == kSequence;
    } else if (!inSequence) {
      glyphOf_.emplace(bytes_.substr(offset, length), glyph);
    }
    offset += length;
  }
}

bool Font::IsSet(std::string_view character, int x, int y) const {
  auto found = glyphOf_.find(character);
  if (found == glyphOf_.end()) found = glyphOf_.find("?");
  const std::size_t rowSize = (width_ + 7) / 8;
  const std::size_t at = glyphs_ + found->second * glyphSize_ + y * rowSize + x / 8;
  return (static_cast<unsigned char>(bytes_.at(at)) >> (7 - x % 8) & 1) != 0;
}

}  // namespace Picture
