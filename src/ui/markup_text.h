// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace Kiva {

/// Helpers for those who compose markup.

/// Text from outside (names of the host, exception texts) made safe to put into markup: braces are
/// shown as parentheses.
std::string plainText(std::string_view text);

/// Lines that the markup takes at this width, with the keywords of the console; 0 for no text. A
/// line break at the end begins no line.
int countLines(std::string_view markup, int width);

/// The text without blanks at its ends, and with one blank for each run of white space within it.
std::string squeezeBlanks(std::string_view text);

}  // namespace Kiva
