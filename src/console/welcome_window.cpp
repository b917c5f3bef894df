// SPDX-License-Identifier: MIT
#include "console/welcome_window.h"

#include <cstdlib>

#include "console/general_window.h"
#include "console/welcome_content.h"
#include "console/welcome_layout.h"
#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "core/palette.h"
#include "core/session.h"
#include "system/audit_events.h"
#include "system/login_dialog.h"
#include "system/login_state.h"
#include "tarnctl/system/system_info_impl.h"
#include "ui/text_area.h"

namespace Kiva {

namespace {

Rect screen() {
  return {0, 0, screenColumns(), screenLines()};
}

Window& addArea(Window& window, const Rect& place, Color background) {
  return window.Add(std::make_unique<Window>(window, place, background, kWhite));
}

void addText(Window& area, const Rect& place, Color foreground, const std::string& text) {
  area.Add(std::make_unique<TextArea>(area, place, foreground)).SetText(text);
}

}  // namespace

WelcomeWindow::WelcomeWindow()
    : Frame(nullptr, screen(), kBlack, kWhite), dns_(HostCtl::Network::kDefaultStack) {}

void WelcomeWindow::Update() {
  const std::string message = TarnCtl::System::SystemInfoImpl().GetWelcomeMessage();
  if (message.empty())
    ShowFacts();
  else
    ShowMessage(message);
  SetActive(IsActive());
}

void WelcomeWindow::ShowMessage(const std::string& message) {
  RemoveAll();
  Erase();
  DrawBox();
  addText(*this, {2, 2, Width() - 4, Height() - 4}, kWhite, message);
}

void WelcomeWindow::ShowFacts() {
  const WelcomeContent content = readWelcomeContent(dns_);
  const WelcomeLayout layout = layOutWelcome(Width(), Height(), !content.warning.empty());
  RemoveAll();
  Erase();
  AddTexts(layout, content);
  DrawBox();
  if (layout.cramped)
    addText(*this, {2, 1, Width() - 4, 1}, kWhite,
            formatted("This screen needs %d x %d.", kFullColumns, kFullLines));
}

void WelcomeWindow::AddTexts(const WelcomeLayout& layout, const WelcomeContent& content) {
  Window& top = addArea(*this, layout.top, kDarkGrey);
  addText(top, layout.banner, kWhite, content.banner);
  addText(top, layout.hardware, kWhite, content.hardware);
  addText(top, layout.processors, kWhite, content.processors);
  Window& bottom = addArea(*this, layout.bottom, kAmber);
  addText(bottom, layout.management, kBlack, content.management);
  if (!content.warning.empty()) addText(bottom, layout.warning, kDarkGrey, content.warning);
  addText(bottom, layout.footer, kBlack,
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
  if (key == Key::kF2 || key == Key::kF12) return LogIn(key);
  if (key != Key::kF4 || !toggleMonochrome()) repaintScreen();
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
  GeneralWindow menu(*this);
  runWindow(menu);
  setSessionActive(false);
  logInfo("User %s logged out", session().user.c_str());
  writeAuditRecord(kLoginDisconnect, session().user, AuditOutcome::Success,
                   {{"reason", "Session closed"}});
  Update();
}

void WelcomeWindow::RunShutdown() {
  Update();
}

void WelcomeWindow::EndTimedOutSession() {
  if (session().active) {
    logInfo("User %s logged out due to time out", session().user.c_str());
    writeAuditRecord(kLoginDisconnect, session().user, AuditOutcome::Success,
                     {{"reason", "Time out"}});
    session().user.clear();
  }
  SetActive(true);
  Update();
}

}  // namespace Kiva
