// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "system/secret.h"

namespace Kiva {

enum class Authentication { Accepted, NoPermission, PasswordExpired, Failed };

/// One attempt to log in, with everything that it leaves behind: the session's user, log lines, the
/// audit record and, when it is refused, an event. What the operator reads about a refusal is the
/// login dialog's. An expired password leaves its user recorded, so that it can be changed.
Authentication authenticate(const std::string& user, const Secret& secret);

}  // namespace Kiva
