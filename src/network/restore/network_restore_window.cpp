// SPDX-License-Identifier: MIT
#include "network/restore/network_restore_window.h"

#include "network/restore/create_port_group_dialog.h"
#include "network/restore/create_xss_dialog.h"
#include "network/restore/migrate_tarnnic_dialog.h"
#include "network/restore/restore_network_dialog.h"
#include "network/restore/restore_xds_dialog.h"
#include "network/restore/safe_mode_network_dialog.h"
#include "ui/footer.h"

namespace Kiva {

namespace {

constexpr const char* kExit =
    "{align:right}{color:white}<Esc>{/color} {color:light-grey}Exit{/color}{/align}";
constexpr const char* kCreate = "{color:white}<Enter>{/color} {color:light-grey}Create";
constexpr const char* kMigrate = "{color:white}<Enter>{/color} {color:light-grey}Migrate";
constexpr const char* kRestart = "{color:white}<Enter>{/color} {color:light-grey}Restart";
constexpr const char* kRestore = "{color:white}<Enter>{/color} {color:light-grey}Restore{/color}";

}  // namespace

const std::vector<NetworkRestoreWindow::Entry>& NetworkRestoreWindow::Entries() {
  using W = NetworkRestoreWindow;
  static const std::vector<Entry> entries{
      {.title = TextId::kCreateStandardSwitch,
       .description = TextId::kCreateStandardSwitchByName,
       .footer = kCreate,
       .enter = &W::Open<CreateXssDialog>},
      {.title = TextId::kCreatePortGroup,
       .description = TextId::kCreatePortGroupByName,
       .footer = kCreate,
       .enter = &W::Open<CreatePortGroupDialog>},
      {.title = TextId::kMigrateTarnNicToStandardSwitch,
       .description = TextId::kMigrateTarnnicToChosenPortgroup,
       .footer = kMigrate,
       .enter = &W::Open<MigrateTarnnicDialog>},
      {.title = TextId::kRestoreNetworkSettings,
       .description = TextId::kRestoringNetworkSettingsReverts,
       .footer = kRestart,
       .enter = &W::Open<RestoreNetworkDialog>},
      {.title = TextId::kRestoreStandardSwitch,
       .description = TextId::kManagementNetworkOntoNewVSwitch,
       .footer = kRestore,
       .enter = &W::Open<SafeModeNetworkDialog>},
      {.title = TextId::kRestoreXds,
       .description = TextId::kReconfigureXdsManagementPort,
       .footer = kRestore,
       .enter = &W::Open<RestorexDSDialog>},
  };
  return entries;
}

NetworkRestoreWindow::NetworkRestoreWindow(Frame& owner)
    : MenuWindow(
          owner,
          {.title = TextId::kNetworkRestoreOptionsTitle, .leftFooter = kSelect, .wayOut = kExit}) {
  AddEntries(Entries());
}

template <typename Dialog>
void NetworkRestoreWindow::Open() {
  {
    Dialog dialog(*this);
    runWindow(dialog);
  }
  Show();
}

}  // namespace Kiva
