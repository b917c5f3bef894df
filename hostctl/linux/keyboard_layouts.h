// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "linux/files.h"

namespace HostLinux {

/// The names under which `loadkeys` finds the console keymaps installed below /usr/share/keymaps,
/// each once, sorted.
std::vector<std::string> readKeyboardLayouts(const Files& files);

/// The layout set in /etc/default/keyboard (the first of a list), else in /etc/vconsole.conf.
std::string readKeyboardLayout(const Files& files);

}  // namespace HostLinux
