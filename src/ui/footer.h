// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// Footers that more than one window shows. A key stands in black and its action in dark grey; what
/// confirms and cancels stands at the right.
inline constexpr const char* kOkFooter =
    "{align:right}{color:black}<Enter>{/color} {color:dark-grey}OK{/color}{/align}";
inline constexpr const char* kOkCancelFooter =
    "{align:right}{color:black}<Enter>{/color} {color:dark-grey}OK{/color}  "
    "{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";
inline constexpr const char* kSelectFooter =
    "{color:black}<Up/Down>{/color}{color:dark-grey} Select{/color}";

}  // namespace Kiva
