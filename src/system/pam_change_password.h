// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "system/secret.h"

namespace Kiva {

/// Changes `user`'s password through the host's authentication stack, service "kiva"; true when the
/// stack has changed it. The stack's first hidden prompt gets the old password, whichever step asks
/// it, the second and the third the new one. An expired password can be changed too.
bool PamChangePassword(const std::string& user, const Secret& oldPassword,
                       const Secret& newPassword);

}  // namespace Kiva
