// SPDX-License-Identifier: MIT
#include "network/details.h"

#include "ui/markup_text.h"

namespace Kiva {

std::string detail(const std::string& label, const std::string& value) {
  return "{align:padding:20}" + label + "{/align}" + value + "\n";
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + plainText(name);
  return text;
}

}  // namespace Kiva
