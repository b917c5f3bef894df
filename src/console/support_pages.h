// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace Kiva {

/// The pages of the host's support information, as markup; at least one. A "$" line ends a page, a
/// "#" line is a comment.
std::vector<std::string> readSupportPages(std::istream& file);

/// The same from the host's file; one page that says so when there is none to read.
std::vector<std::string> supportPages();

/// One page as the right pane shows it, in so many rows and columns: what fits of it, and in the
/// last row the keys that lead to other pages.
std::string supportPageText(const std::vector<std::string>& pages, std::size_t page, int columns,
                            int rows);

}  // namespace Kiva
