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
/// What Enter does, at the start of a menu's right footer.
inline constexpr const char* kChange =
    "{color:white}<Enter>{/color}{color:light-grey} Change{/color}";
/// For lists and menus of dialogs' kind, at the start of the footer.
inline constexpr const char* kSelect =
    "{color:black}<Up/Down>{/color} {color:dark-grey}Select{/color}";
/// For lists of check items or choices, at the start of the footer.
inline constexpr const char* kToggle =
    "{color:black}<Space>{/color} {color:dark-grey}Toggle Selected{/color}";
/// For choices of which Space marks one.
inline constexpr const char* kMarkFooter =
    "{color:black}<Up/Down>{/color} {color:dark-grey}Select{/color}  "
    "{color:black}<Space>{/color} {color:dark-grey}Mark Selected{/color}"
    "{align:right}{color:black}<Enter>{/color} {color:dark-grey}OK{/color}  "
    "{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";
/// Where Enter is too easily pressed by mistake.
inline constexpr const char* kF11CancelFooter =
    "{align:right}{color:black}<F11>{/color} {color:dark-grey}OK{/color}  "
    "{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";
/// Lists whose entries have details behind them.
inline constexpr const char* kDetailsToggleFooter =
    "{color:black}<D>{/color} {color:dark-grey}View Details{/color}  "
    "{color:black}<Space>{/color} {color:dark-grey}Toggle Selected{/color}"
    "{align:right}{color:black}<Enter>{/color} {color:dark-grey}OK{/color}  "
    "{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";
inline constexpr const char* kDetailsChangeFooter =
    "{align:left}{color:black}<D>{/color} {color:dark-grey}View Details{/color}  "
    "{color:black}<Left/Right>{/color} {color:dark-grey}Change Selection{/color}  {/align}"
    "{align:right}  {color:black}<Enter>{/color} {color:dark-grey}OK{/color}  "
    "{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

}  // namespace Kiva
