// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "linux/files.h"

namespace HostLinux {

/// The names of the console keymaps installed below /usr/share/keymaps, each once, sorted, as
/// `loadkeys` finds them. Left out are the parts that keymaps include, the maps of machines whose
/// keyboards number their keys in another way (every keyboard of a Linux console today numbers them
/// as a PC's does), and names that are not plain.
std::vector<std::string> readKeyboardLayouts(const Files& files);

/// Puts the key map of one of these in force on the consoles of this machine, and stores it as
/// KEYMAP in /etc/vconsole.conf, whose other lines stay. Both throw HostCtlException.
void loadKeyboardMappings(const Files& files, const std::string& layout);
void writeKeyboardLayout(const Files& files, const std::string& layout);

/// The layout set in /etc/vconsole.conf, else in /etc/default/keyboard (the first of a list).
std::string readKeyboardLayout(const Files& files);

/// The device through which the consoles' one key map is changed: the virtual terminal that
/// `terminal` is, else one of the machine's. Empty on a machine without virtual terminals.
std::string findConsoleDevice(int terminal);

}  // namespace HostLinux
