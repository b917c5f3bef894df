// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace HostLinux {

/// Whether `user` is an account of this machine that may administer it: root, or a member of the
/// group sudo.
bool mayAdminister(const std::string& user);

}  // namespace HostLinux
