// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "system/secret.h"

namespace Kiva {

/// Asks the host's authentication stack, service "kiva", whether `user` may log in with `secret` (a
/// password or a PIN). Returns the PAM status, 0 on success. The secret answers the stack's first
/// hidden prompt and nothing else.
int PamLogin(const std::string& user, const Secret& secret);

}  // namespace Kiva
