// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace HostTools {

using Row = std::vector<std::string>;

/// Rows as text with aligned columns, two blanks between them; all have as many cells as the first,
/// which names the columns. An empty cell reads "-", and a control character "?", because many of
/// the texts come from elsewhere.
std::string tableText(const std::vector<Row>& rows);

}  // namespace HostTools
