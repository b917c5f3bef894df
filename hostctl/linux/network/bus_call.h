// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>
#include <variant>

namespace HostLinux {

/// One method call on the system bus. Its argument is nothing, the index of a link, or a name (with
/// which goes that nobody is to be asked for a password). `service` is what an operator calls the
/// other side; it is started for the call only where `mayStart`.
struct BusCall {
  const char* service;
  const char* busName;
  const char* path;
  const char* interface;
  const char* method;
  bool mayStart = false;
  std::variant<std::monostate, int, std::string> argument;
};

/// A function of the module kiva-networkd.so, found by this name: has the call made and answered
/// within `limit`, or says in `error` why not, in the other side's words where it has any.
inline constexpr const char* kBusCallSymbol = "kivaBusCall";
using BusCallFunction = bool (*)(const BusCall& call, std::chrono::milliseconds limit,
                                 std::string& error);

}  // namespace HostLinux
