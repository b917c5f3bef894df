// SPDX-License-Identifier: MIT
#include "console/welcome_window.h"

#include <cstdlib>

#include "console/general_window.h"
#include "console/welcome_layout.h"
#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "core/palette.h"
#include "core/session.h"
#include "system/audit_events.h"
#include "system/login_dialog.h"
#include "system/login_state.h"
#include "system/shutdown_dialog.h"
#include "tarnctl/system/system_info_impl.h"
#include "ui/text_area.h"

namespace Kiva {

WelcomeWindow::WelcomeWindow()
    : Frame(nullptr, screenRect(), kBlack, kWhite), dns_(HostCtl::Network::kDefaultStack) {}

void WelcomeWindow::Update() {
  const std::string message = TarnCtl::System::SystemInfoImpl().GetWelcomeMessage();
  if (message.empty())
    ShowFacts();
  else
    ShowMessage(message);
  if (Width() < kFullColumns || Height() < kFullLines)
    Make<TextArea>(Rect{2, 1, Width() - 4, 1}, kWhite,
                   formatted("This screen needs %d x %d.", kFullColumns, kFullLines));
  SetActive(IsActive());
}

void WelcomeWindow::ShowMessage(const std::string& message) {
  RemoveAll();
  Erase();
  DrawBox();
  Make<TextArea>(Rect{2, 2, Width() - 4, Height() - 4}, kWhite, message);
}

void WelcomeWindow::ShowFacts() {
  const WelcomeContent content = readWelcomeContent(dns_, adapterAlert_);
  const WelcomeLayout layout = layOutWelcome(Width(), Height(), !content.warning.empty());
  RemoveAll();
  Erase();
  AddTexts(layout, content);
  DrawBox();
}

void WelcomeWindow::AddTexts(const WelcomeLayout& layout, const WelcomeContent& content) {
  Window& top = Make<Window>(layout.top, kDarkGrey, kWhite);
  top.Make<TextArea>(layout.banner, kWhite, content.banner);
  top.Make<TextArea>(layout.hardware, kWhite, content.hardware);
  top.Make<TextArea>(layout.processors, kWhite, content.processors);
  Window& bottom = Make<Window>(layout.bottom, kAmber, kWhite);
  bottom.Make<TextArea>(layout.management, kBlack, content.management);
  if (!content.warning.empty()) bottom.Make<TextArea>(layout.warning, kDarkGrey, content.warning);
  bottom.Make<TextArea>(
      layout.footer, kBlack,
      formatted("<F2> {color:dark-grey}%s{/color}{align:right}<F12> "
                "{color:dark-grey}%s{/color}{/align}",
                Text(TextId::kCustomizeSystemViewLogs), Text(TextId::kShutDownRestartFooter)));
}

int WelcomeWindow::Foreground() {
  Update();
  for (;;) {
    const int key = getKey(*this, IdleTimeout::Ignored);
    Handle(key);
    setSessionActive(false);
    if (session().stopPending) std::exit(0);
  }
}

void WelcomeWindow::Handle(int key) {
  if (key == Key::kF2 || key == Key::kF12)
    LogIn(key);
  else if (key != Key::kF4 || !toggleMonochrome())
    repaintScreen();
  Update();
}

void WelcomeWindow::LogIn(int key) {
  try {
    if (!RunLogin()) return;
    if (key == Key::kF2)
      RunSession();
    else
      RunShutdown();
  } catch (const KivaTimeout&) {
    EndTimedOutSession();
  }
}

int WelcomeWindow::RunLogin() {
  if (IsConsoleLoginShown()) {
    LoginDialog dialog(*this);
    return runWindow(dialog);
  }
  LoginDisabledDialog dialog(*this);
  return runWindow(dialog);
}

void WelcomeWindow::RunSession() {
  setSessionActive(true);
  updateScreen();
  GeneralWindow menu(*this);
  runWindow(menu);
  setSessionActive(false);
  logInfo("User %s logged out", session().user.c_str());
  writeAuditRecord(kLoginDisconnect, session().user, AuditOutcome::Success,
                   {{"reason", "Session closed"}});
  Update();
}

void WelcomeWindow::RunShutdown() {
  ShutdownDialog dialog(*this);
  runWindow(dialog);
}

void WelcomeWindow::EndTimedOutSession() {
  if (session().active) {
    logInfo("User %s logged out due to time out", session().user.c_str());
    writeAuditRecord(kLoginDisconnect, session().user, AuditOutcome::Success,
                     {{"reason", "Time out"}});
    session().user.clear();
  }
  keyWait().currentWindow = this;
  SetActive(true);
}

}  // namespace Kiva
