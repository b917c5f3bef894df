// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// Makes the process fit to own a terminal, whatever its parent left it: children can be waited
/// for, a closed pipe or a terminal that hangs up is an error of that call and no signal,
/// descriptors 0 to 2 are open, and an unforeseen exception gives the terminal back before it
/// aborts.
void prepareProcess();

/// Sends standard error to nowhere, so that no library writes over the screen.
void silenceStandardError();

}  // namespace Kiva
