// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "hostseam/driver.h"

namespace TarnCtl {

/// The driver, told which library operation is about to use it.
inline HostSeam::Driver& enter(std::string_view operation) {
  HostSeam::Driver& driver = HostSeam::driver();
  driver.Enter(operation);
  return driver;
}

}  // namespace TarnCtl
