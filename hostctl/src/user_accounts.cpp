// SPDX-License-Identifier: MIT
#include "hostctl/auth/user_accounts.h"

#include "hostctl/system/feature_list.h"
#include "src/enter.h"

namespace HostCtl::Authentication {

void StoreUserAccountsToCs() {
  TarnCtl::enter("StoreUserAccountsToCs").StoreUserAccounts();
}

}  // namespace HostCtl::Authentication

namespace HostCtl::System {

bool FeatureList::IsEnabled(Feature feature) {
  return TarnCtl::enter("FeatureList").ReadFeature(feature);
}

}  // namespace HostCtl::System
