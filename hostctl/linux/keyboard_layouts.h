// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "linux/files.h"

namespace HostLinux {

/// The names under which `loadkeys` finds the console keymaps installed below /usr/share/keymaps,
/// each once, sorted.
std::vector<std::string> readKeyboardLayouts(const Files& files);

/// Puts the key map of one of these in force on the consoles of this machine, and stores it as
/// KEYMAP in /etc/vconsole.conf. Both throw HostCtlException.
void loadKeyboardMappings(const Files& files, const std::string& layout);
void writeKeyboardLayout(const Files& files, const std::string& layout);

/// The layout set in /etc/default/keyboard (the first of a list), else in /etc/vconsole.conf.
std::string readKeyboardLayout(const Files& files);

}  // namespace HostLinux
