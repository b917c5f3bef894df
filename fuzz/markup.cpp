// SPDX-License-Identifier: MIT
// Layout and paint of any markup in an area of any size: the first two bytes are its width and
// height. Every run must begin inside the area and be clean text.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "ui/markup_layout.h"
#include "ui/markup_paint.h"

namespace {

Kiva::KeywordTable keywords() {
  Kiva::KeywordTable table;
  table.Register("hostname", [] { return std::string("h\303\266st.{example}\n.org"); });
  table.Register("nothing", [] { return std::string(); });
  return table;
}

bool isClean(const Kiva::Run& run, const Kiva::PaintArea& area) {
  if (run.row < 0 || run.row >= area.height) return false;
  if (run.column < 0 || run.column >= area.width) return false;
  for (const unsigned char byte : run.text) {
    if (byte < ' ' || byte == 0x7f) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static const Kiva::KeywordTable kKeywords = keywords();
  const int width = data[0] % 160 - 2;
  const int height = data[1] % 60 - 1;
  const std::string_view markup(reinterpret_cast<const char*>(data + 2), size - 2);
  const std::string laidOut = Kiva::layOutMarkup(markup, width, kKeywords);
  for (const bool active : {true, false}) {
    const Kiva::PaintArea area{.width = width, .height = height, .active = active};
    for (const Kiva::Run& run : Kiva::paintMarkup(laidOut, area)) {
      if (!isClean(run, area)) std::abort();
    }
  }
  return 0;
}
