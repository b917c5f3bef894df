// SPDX-License-Identifier: MIT
#include "console/general_window.h"

#include "console/log_viewer.h"
#include "console/network_summary.h"
#include "console/support_pages.h"
#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "core/session.h"
#include "core/terminal.h"
#include "network/management_interface.h"
#include "system/host_tools.h"
#include "tarnctl/adv/advanced_option_impl.h"
#include "tarnctl/system/system_info_impl.h"
#include "ui/footer.h"
#include "ui/markup_text.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

constexpr const char* kLockdownIsEnabled = "hmxsvc/auth/lockdown_is_enabled";
constexpr const char* kLockdownIsPossible = "hmxsvc/auth/lockdown_is_possible";

// What Enter does, in the right footer; every entry's ends with the way out.
constexpr const char* kChange = "{color:white}<Enter>{/color}{color:light-grey} Change{/color}";
constexpr const char* kChangeLockdown = "{color:white}<Enter>{color:light-grey} Change{/color}";
constexpr const char* kMore = "{color:white}<Enter>{/color}{color:light-grey} More{/color}";
constexpr const char* kRestart = "{color:white}<Enter>{/color} {color:light-grey}Restart";
constexpr const char* kRunTest = "{color:white}<Enter>{/color}{color:light-grey} Run Test{/color}";
constexpr const char* kReset = "{color:white}<Enter>{/color}{color:light-grey} Reset{/color}";
constexpr const char* kLogOut =
    "{align:right}{color:white}<Esc>{/color}{color:light-grey} Log Out{/color}{/align}";

bool managementInterfaceUsable() {
  if (findManagementInterface()) return true;
  logError("Could not get a suitable management interface");
  return false;
}

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
       .text = &W::PasswordText},
      {.title = TextId::kConfigureLockdownMode,
       .description = TextId::kLockdownModeAndAccess,
       .footer = kChangeLockdown,
       .selectable = &W::LockdownSelectable,
       .text = &W::LockdownText},
      separator,
      {.title = TextId::kConfigureManagementNetwork,
       .description = TextId::kToViewOrModifyManagementNetwork,
       .footer = kMore,
       .selectable = &W::NetworkUsable,
       .text = &W::NetworkText},
      {.title = TextId::kRestartManagementNetwork,
       .description = TextId::kRestartingMayBeRequired,
       .footer = kRestart,
       .selectable = &W::NetworkUsable,
       .enter = &W::EnterRestartNetwork},
      {.title = TextId::kTestManagementNetwork,
       .description = TextId::kToPerformBriefNetworkTest,
       .footer = kRunTest,
       .selectable = &W::NetworkUsable},
      {.title = TextId::kNetworkRestoreOptions,
       .description = TextId::kToViewNetworkRestoreOptions,
       .footer = kRestart},
      separator,
      {.title = TextId::kConfigureKeyboard,
       .description = TextId::kToSelectKeyboardLayout,
       .footer = kMore,
       .listed = &W::OnLocalConsole,
       .text = &W::KeyboardText},
      {.title = TextId::kTroubleshootingOptions,
       .description = TextId::kToViewTroubleshootingOptions,
       .footer = kMore},
      separator,
      {.title = TextId::kViewSystemLogs, .text = &W::LogsText},
      separator,
      {.title = TextId::kViewSupportInformation, .text = &W::SupportText},
      separator,
      {.title = TextId::kResetSystemConfiguration,
       .description = TextId::kAllSystemParametersWillBeReverted,
       .footer = kReset,
       .selectable = &W::ResetSelectable},
  };
  return entries;
}

GeneralWindow::GeneralWindow(Frame& owner)
    : RootWindow(owner),
      lockdownEnabled_(HmxCmdGetBool(kLockdownIsEnabled)),
      lockdownSelectable_(lockdownEnabled_ || HmxCmdGetBool(kLockdownIsPossible)),
      networkUsable_(managementInterfaceUsable()),
      supportPages_(supportPages()) {
  AddEntries();
}

void GeneralWindow::AddEntries() {
  for (const Entry& entry : Entries()) {
    if (entry.listed && !(this->*entry.listed)()) continue;
    const bool selectable = !entry.selectable || (this->*entry.selectable)();
    Menu().Append(std::make_unique<LabelItem>(Text(entry.title),
                                              selectable ? Selectable::Yes : Selectable::No));
    entries_.push_back(&entry);
  }
}

const GeneralWindow::Entry& GeneralWindow::Selected() {
  return *entries_[static_cast<std::size_t>(Menu().FocusedIndex())];
}

bool GeneralWindow::OnLocalConsole() {
  return terminal().onLocalConsole;
}
bool GeneralWindow::ResetSelectable() {
  return !bootedOverNetwork();
}

int GeneralWindow::Foreground() {
  Menu().FocusStart();
  Show();
  for (;;) {
    const int key = getKey(*this);
    if (key == Key::kEscape) return 1;
    Handle(key);
  }
}

void GeneralWindow::Handle(int key) {
  if (key == Key::kUp || key == Key::kDown)
    Move(key);
  else if (key == Key::kEnter)
    Enter();
  else if (IsSelected(TextId::kViewSupportInformation))
    TurnPage(key);
  else if (IsSelected(TextId::kViewSystemLogs) && key >= '0' && key <= '9')
    OpenLog(key - '0');
}

void GeneralWindow::Enter() {
  if (Selected().enter) (this->*Selected().enter)();
}

void GeneralWindow::Move(int key) {
  if (IsSelected(TextId::kViewSupportInformation)) supportPage_ = 0;
  if (key == Key::kDown)
    Menu().MoveDown();
  else
    Menu().MoveUp();
  Repaint();
}

void GeneralWindow::TurnPage(int key) {
  if (key == Key::kPageDown && supportPage_ + 1 < supportPages_.size())
    ++supportPage_;
  else if (key == Key::kPageUp && supportPage_ > 0)
    --supportPage_;
  else
    return;
  RepaintRight();
}

void GeneralWindow::OpenLog(int digit) {
  const auto row = logForDigit(digit, availableLogs_);
  if (row) viewLog(*this, kSystemLogs[*row].file);
}

void GeneralWindow::EnterRestartNetwork() {
  if (managementInterfaceUsable()) return;
  showMessage(*this, TextId::kRestartManagementNetworkError,
              Text(TextId::kManagementNetworkInterfaceNotFound));
}

void GeneralWindow::Repaint() {
  SetLeftTitle(Text(TextId::kSystemCustomization));
  Menu().Draw();
  SetLeftFooter(kSelectFooter);
  RepaintRight();
}

void GeneralWindow::RepaintRight() {
  const Entry& entry = Selected();
  SetRightTitle(Text(entry.title));
  SetRightText(entry.text ? (this->*entry.text)() : Description());
  SetRightFooter(std::string(entry.footer) + kLogOut);
}

std::string GeneralWindow::Description() {
  return std::string("{color:light-grey}") + Text(Selected().description) + "{/color}";
}

std::string GeneralWindow::Described(const std::string& state) {
  return "{color:white}" + state + "{/color}\n\n" + Description();
}

std::string GeneralWindow::PasswordText() {
  if (!session().emptyPassword) return Described(Text(TextId::kSet));
  return Described(std::string(Text(TextId::kNotSet)) + "\n" +
                   Text(TextId::kChangeDefaultPassword));
}

std::string GeneralWindow::LockdownText() {
  return Described(Text(lockdownEnabled_ ? TextId::kEnabled : TextId::kDisabled));
}

std::string GeneralWindow::NetworkText() {
  return Described(networkSummary(RightPane().Width()));
}

std::string GeneralWindow::KeyboardText() {
  return Described(plainText(TarnCtl::System::SystemInfoImpl().GetKeyboardLayout()));
}

std::string GeneralWindow::LogsText() {
  availableLogs_ = availableLogs();
  std::string text = std::string(Text(TextId::kPressKeyToViewLog)) + "\n\n";
  int number = 0;
  for (std::size_t row = 0; row < kSystemLogs.size(); ++row)
    if (availableLogs_[row])
      text += formatted("{color:white}<%d> {color:light-grey}%s{/color}\n", ++number,
                        kSystemLogs[row].title);
  return text;
}

std::string GeneralWindow::SupportText() {
  return supportPageText(supportPages_, supportPage_, RightPane().Width(), RightPane().Height());
}

}  // namespace Kiva
