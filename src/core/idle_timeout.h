// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace Kiva {

/// The host's setting of how many seconds without a key end an operator's session. The key wait
/// reads it when a session begins; operators change it from the troubleshooting options.

/// 600 where the host has no such number or does not tell.
std::int64_t readIdleTimeout();
/// In force from the next session on. Throws HostCtlException.
void storeIdleTimeout(std::int64_t seconds);

}  // namespace Kiva
