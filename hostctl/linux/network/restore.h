// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "linux/network/switch_editor.h"

namespace HostLinux {

/// The adapters that the default network can have, by the kernel's names. Throws HostCtlException
/// of the editor's change where that network cannot be made, because others have them all or a
/// device of its names: asked before it is made, and before the old one is taken away for it.
std::vector<std::string> nicsForDefault(const SwitchEditor& editor);

}  // namespace HostLinux
