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

// The first `rows` lines of the text, or blank ones behind it, every one of them ended, so that
// what follows begins a new row. A line break within a tag ends no line.
std::string filledRows(const std::string& laidOut, int rows) {
  std::string text;
  bool inTag = false;
  for (std::size_t i = 0; i < laidOut.size() && rows > 0; ++i) {
    const char character = laidOut[i];
    inTag = character == '{' || (inTag && character != '}');
    if (character == '\n' && !inTag) --rows;
    text += character;
  }
  return rows > 0 ? text + std::string(static_cast<std::size_t>(rows), '\n') : text;
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
  std::vector<std::string> pages = readSupportPages(file);
  if (!file.eof() || file.bad()) return {kNothingInstalled};
  return pages;
}

std::string supportPageText(const std::vector<std::string>& pages, std::size_t page, int columns,
                            int rows) {
  const std::string laidOut = layOutMarkup(pages[page], columns, keywordTable());
  const std::string hints = pageHints(page, pages.size());
  if (hints.empty()) return laidOut;
  return filledRows(laidOut, rows - 1) + hints;
}

}  // namespace Kiva
