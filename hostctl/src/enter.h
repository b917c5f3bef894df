// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "hostseam/driver.h"

namespace TarnCtl {

/// The driver, told which library operation is about to use it.
inline HostSeam::Driver& enter(std::string_view operation) {
  HostSeam::Driver& driver = HostSeam::driver();
  driver.Enter(operation);
  return driver;
}

/// The same for a changing operation of the network, which the driver is told with its arguments.
template <typename... Arguments>
HostSeam::Driver& enterChange(std::string_view operation, const Arguments&... arguments) {
  HostSeam::Driver& driver = enter(operation);
  std::string call(operation);
  ((call += " ", call += arguments), ...);
  driver.Note(call);
  return driver;
}

inline const char* onOff(bool on) {
  return on ? "on" : "off";
}

}  // namespace TarnCtl
