// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "ui/keyword_table.h"

namespace Kiva {

/// The first of the two passes that draw a text: breaks the markup into lines of `width` columns,
/// aligns spans and fields, and puts the keywords' values in. Colour tags, and tags that it does
/// not know, stay in the result and take no room. Called by text areas, and by whoever must know
/// how many lines a text has.
///
/// A width of 0 or below gives one column a line. Keyword values come from outside, so braces in
/// them are shown as parentheses. A line may come out wider than `width` in two cases: a
/// right-aligned or centred span that wraps, and a line break cut off by a full padding field.
std::string layOutMarkup(std::string_view markup, int width, const KeywordTable& keywords);

}  // namespace Kiva
