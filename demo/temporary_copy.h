// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace Demo {

/// Makes a fresh copy of the sample that comes with the program and returns its directory. The copy
/// goes when the program ends by itself; after a kill or a crash it stays. Throws
/// std::system_error.
std::filesystem::path makeTemporaryCopy();

}  // namespace Demo
