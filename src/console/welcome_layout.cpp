// SPDX-License-Identifier: MIT
#include "console/welcome_layout.h"

#include <algorithm>

namespace Kiva {

WelcomeLayout layOutWelcome(int columns, int lines, bool warns) {
  const int topHeight = lines / 2;
  const int bottomHeight = lines - topHeight;
  const int footerRow = bottomHeight - 2;
  const int warningRow = std::max(1, std::min(9, bottomHeight - 5));
  constexpr int kManagementRows = 8;
  const int managementRows = warns ? std::min(kManagementRows, warningRow - 1) : kManagementRows;
  return {
      .top = {0, 0, columns, topHeight},
      .bottom = {0, topHeight, columns, bottomHeight},
      .banner = {8, 5, columns - 16, 1},
      .hardware = {8, 7, columns - 16, 1},
      .processors = {8, 9, columns - 16, 2},
      .management = {8, 1, columns - 16, std::min(managementRows, footerRow - 1)},
      .warning = {16, warningRow, columns - 32, std::min(6, footerRow - warningRow)},
      .footer = {2, footerRow, columns - 4, 1},
  };
}

}  // namespace Kiva
