// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace HostCtl::Lib {

/// The one exception of the host-control library. Its text is what an operator reads in the system
/// log and in message dialogs: what was tried, on which object, and what the host answered.
class HostCtlException : public std::runtime_error {
 public:
  explicit HostCtlException(const std::string& text) : std::runtime_error(text) {}
  HostCtlException(const std::string& operation, const std::string& object,
                   const std::string& cause)
      : std::runtime_error(operation + " " + object + ": " + cause) {}
};

}  // namespace HostCtl::Lib
