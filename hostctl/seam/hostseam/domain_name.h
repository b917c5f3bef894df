// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace HostSeam {

/// Labels of letters, digits, "-" and "_", parted by points, with or without one at the end; at
/// most 63 characters in each and 253 in all. Hosts refuse search domains that are none.
bool isDomainName(std::string_view text);

}  // namespace HostSeam
