// SPDX-License-Identifier: MIT
// Any file as support information, each of its pages in panes of any size.
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "console/support_pages.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  std::istringstream file(std::string(reinterpret_cast<const char*>(data + 2), size - 2));
  const auto pages = Kiva::readSupportPages(file);
  if (pages.empty()) std::abort();
  for (std::size_t page = 0; page < pages.size() && page < 8; ++page) {
    Kiva::supportPageText(pages, page, data[0] % 140, data[1] % 50);
  }
  return 0;
}
