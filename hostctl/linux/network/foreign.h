// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "linux/files.h"

namespace HostLinux {

/// Who else configures `interface`, in words for an operator, because a second configuration beside
/// his would have the two overwrite each other: ifupdown that has a stanza for it, NetworkManager
/// that manages it, or a file of networkd in force whose name sorts before ours. Empty for nobody.
/// The management interface that Kiva made has no other manager, but such a file can outrank it,
/// too. Files alone are read.
std::string foreignManagerOf(const Files& files, const std::string& interface);

/// The same without networkd: who would make an interface anew in his own way.
std::string otherManagerOf(const Files& files, const std::string& interface);

/// Throws HostCtlException of `operation` where somebody else configures `interface`, and where
/// there is no such interface.
void refuseForeign(const Files& files, const std::string& operation, const std::string& interface);

/// The kernel's number of an interface; 0 for none of that name.
int indexOf(const Files& files, const std::string& interface);

}  // namespace HostLinux
