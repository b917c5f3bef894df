// SPDX-License-Identifier: MIT
#include "console/support_pages.h"

#include <algorithm>
#include <fstream>

#include "hostctl/lib/platform.h"
#include "ui/keyword_table.h"
#include "ui/markup_layout.h"

namespace Kiva {

namespace {

constexpr const char* kSupportFile = "/etc/corvo/support";
constexpr const char* kNothingInstalled = "No support information is installed.";

std::string pageHints(std::size_t page, std::size_t count) {
  const bool previous = page > 0;
  const bool next = page + 1 < count;
  if (!previous && !next) return "";
  return std::string("{color:white}") + (previous ? "<Page Up>" : "") +
         (previous && next ? "/" : "") + (next ? "<Page Down>" : "") + "{/color}";
}

// The first `rows` lines of the text, every one of them ended, so that what follows begins a new
// row.
std::string filledRows(const std::string& laidOut, int rows) {
  std::string text;
  std::size_t start = 0;
  for (int row = 0; row < rows; ++row) {
    const std::size_t end = std::min(laidOut.find('\n', start), laidOut.size());
    text += laidOut.substr(start, end - start) + "\n";
    start = std::min(end + 1, laidOut.size());
  }
  return text;
}

}  // namespace

std::vector<std::string> readSupportPages(std::istream& file) {
  std::vector<std::string> pages;
  std::string page, line;
  while (std::getline(file, line)) {
    if (line.starts_with('#')) continue;
    if (line.starts_with('$')) {
      pages.push_back(std::move(page));
      page.clear();
    } else {
      page += line + "\n";
    }
  }
  pages.push_back(std::move(page));
  return pages;
}

std::vector<std::string> supportPages() {
  std::ifstream file(HostCtl::Lib::platform().HostPath(kSupportFile));
  if (!file) return {kNothingInstalled};
  return readSupportPages(file);
}

std::string supportPageText(const std::vector<std::string>& pages, std::size_t page, int columns,
                            int rows) {
  const std::string laidOut = layOutMarkup(pages[page], columns, keywordTable());
  const std::string hints = pageHints(page, pages.size());
  if (hints.empty()) return laidOut;
  return filledRows(laidOut, rows - 1) + hints;
}

}  // namespace Kiva
