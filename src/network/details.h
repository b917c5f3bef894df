// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace Kiva {

// The rows of dialogs that show the details of something of the network.

/// A label and its value, which is markup, as a line of its own.
std::string detail(const std::string& label, const std::string& value);

/// Names of the host as markup, with commas between them.
std::string joined(const std::vector<std::string>& names);

}  // namespace Kiva
