// SPDX-License-Identifier: MIT
#include "console/general_window.h"
#include "core/terminal.h"
#include "tarnctl/adv/advanced_option_impl.h"
#include "ui/footer.h"

namespace Kiva {

namespace {

// What Enter does, in the right footer; every entry's ends with the way out.
constexpr const char* kChangeLockdown = "{color:white}<Enter>{color:light-grey} Change{/color}";
constexpr const char* kMore = "{color:white}<Enter>{/color}{color:light-grey} More{/color}";
constexpr const char* kRestart = "{color:white}<Enter>{/color} {color:light-grey}Restart";
constexpr const char* kRunTest = "{color:white}<Enter>{/color}{color:light-grey} Run Test{/color}";
constexpr const char* kReset = "{color:white}<Enter>{/color}{color:light-grey} Reset{/color}";

bool bootedOverNetwork() {
  const auto option = TarnCtl::Adv::AdvancedOptionImpl::FindOption("PXEBootEnabled");
  const auto* integer = dynamic_cast<HostCtl::Adv::AdvancedIntegerOption*>(option.get());
  return integer && integer->GetValue() != 0;
}

}  // namespace

const std::vector<GeneralWindow::Entry>& GeneralWindow::Entries() {
  using W = GeneralWindow;
  static const Entry separator{.title = TextId::kEmpty, .selectable = &W::Never};
  static const std::vector<Entry> entries{
      {.title = TextId::kConfigurePassword,
       .description = TextId::kToPreventUnauthorizedAccessSetPassword,
       .footer = kChange,
       .text = &W::PasswordText,
       .enter = &W::EnterPassword},
      {.title = TextId::kConfigureLockdownMode,
       .description = TextId::kLockdownModeAndAccess,
       .footer = kChangeLockdown,
       .selectable = &W::LockdownSelectable,
       .text = &W::LockdownText,
       .enter = &W::EnterLockdown},
      separator,
      {.title = TextId::kConfigureManagementNetwork,
       .description = TextId::kToViewOrModifyManagementNetwork,
       .footer = kMore,
       .selectable = &W::NetworkUsable,
       .text = &W::NetworkText,
       .enter = &W::EnterNetwork},
      {.title = TextId::kRestartManagementNetwork,
       .description = TextId::kRestartingMayBeRequired,
       .footer = kRestart,
       .selectable = &W::NetworkUsable,
       .enter = &W::EnterRestartNetwork},
      {.title = TextId::kTestManagementNetwork,
       .description = TextId::kToPerformBriefNetworkTest,
       .footer = kRunTest,
       .selectable = &W::NetworkUsable,
       .enter = &W::EnterTestNetwork},
      {.title = TextId::kNetworkRestoreOptions,
       .description = TextId::kToViewNetworkRestoreOptions,
       .footer = kRestart,
       .enter = &W::EnterNetworkRestore},
      separator,
      {.title = TextId::kConfigureKeyboard,
       .description = TextId::kToSelectKeyboardLayout,
       .footer = kMore,
       .listed = &W::OnLocalConsole,
       .text = &W::KeyboardText,
       .enter = &W::EnterKeyboard},
      {.title = TextId::kTroubleshootingOptions,
       .description = TextId::kToViewTroubleshootingOptions,
       .footer = kMore,
       .enter = &W::EnterTroubleshooting},
      separator,
      {.title = TextId::kViewSystemLogs, .text = &W::LogsText},
      separator,
      {.title = TextId::kViewSupportInformation, .text = &W::SupportText},
      separator,
      {.title = TextId::kResetSystemConfiguration,
       .description = TextId::kAllSystemParametersWillBeReverted,
       .footer = kReset,
       .selectable = &W::ResetSelectable,
       .enter = &W::EnterReset},
  };
  return entries;
}

bool GeneralWindow::OnLocalConsole() {
  return terminal().onLocalConsole;
}
bool GeneralWindow::ResetSelectable() {
  return !bootedOverNetwork();
}

}  // namespace Kiva
