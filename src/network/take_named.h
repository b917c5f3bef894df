// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "hostctl/lib/exception.h"

namespace Kiva {

/// Takes the object of that name out of those that the host told of. Throws HostCtlException, in
/// which `kind` says what it would be, where there is none.
template <typename Named>
std::unique_ptr<Named> takeNamed(std::vector<std::unique_ptr<Named>>& all, const char* kind,
                                 const std::string& name) {
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const auto& one) { return one->GetName() == name; });
  if (found == all.end()) throw HostCtl::Lib::HostCtlException(kind, name, "it does not exist");
  auto taken = std::move(*found);
  all.erase(found);
  return taken;
}

}  // namespace Kiva
