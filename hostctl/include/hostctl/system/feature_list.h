// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace HostCtl::System {

/// What a host can have switched on or off.
enum class Feature { UserAccountsInConfigStore };

/// The name under which a host keeps a feature's switch.
constexpr std::string_view nameOf(Feature feature) {
  switch (feature) {
    case Feature::UserAccountsInConfigStore:
      return "UserAccountsInConfigStore";
  }
  return "";
}

/// The host's feature table.
class FeatureList {
 public:
  /// False also where the host does not know the feature. Throws HostCtlException.
  static bool IsEnabled(Feature feature);
};

}  // namespace HostCtl::System
