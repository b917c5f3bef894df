// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostctl/lib/exception.h"
#include "hostctl/network/network_info.h"
#include "src/enter.h"

namespace TarnCtl::Network {

/// Enters `operation` for a network stack, of which there is only one.
inline void enterStack(const std::string& operation, const std::string& stack) {
  enter(operation);
  if (stack != HostCtl::Network::kDefaultStack)
    throw HostCtl::Lib::HostCtlException(operation, stack, "no such network stack");
}

}  // namespace TarnCtl::Network
