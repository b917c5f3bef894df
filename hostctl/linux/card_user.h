// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace HostLinux {

/// The account that a card stands for, from its holder's certificate: the common name of `subject`
/// (a DER name), else the part before "@" of the user principal name or e-mail address in
/// `certificate` (a DER certificate). Empty when neither says; malformed bytes say nothing.
std::string cardUser(std::string_view subject, std::string_view certificate);

}  // namespace HostLinux
