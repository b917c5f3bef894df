// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/frame.h"

namespace Kiva {

/// Tells the operator that a repair failed, with the cause where the console knows it. The cause is
/// text of the host and is logged already.
void showFailure(Frame& owner, const std::string& cause = {});

}  // namespace Kiva
