// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Kiva {

/// "INTRO" followed by the host's name, a point, its domain and a point, safe to put into markup. A
/// host that does not tell its name gives empty texts.
std::string withHostName(const std::string& intro);

}  // namespace Kiva
