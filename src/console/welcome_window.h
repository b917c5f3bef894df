// SPDX-License-Identifier: MIT
#pragma once

#include "console/welcome_content.h"
#include "tarnctl/network/network_info_impl.h"
#include "ui/frame.h"

namespace Kiva {

struct WelcomeLayout;

/// What the console shows while nobody is logged in: who the host is, its hardware, and where it
/// can be managed; or the administrator's own message. F2 and F12 ask for a login. It is the bottom
/// of the window stack and owns the operator's session.
class WelcomeWindow : public Frame {
 public:
  WelcomeWindow();

  /// The welcome loop; returns only when the process ends.
  int Foreground() override;
  void Notification() override { Update(); }

  /// Reads the host again and redraws the whole screen.
  void Update();

 private:
  void ShowMessage(const std::string& message);
  void ShowFacts();
  void AddTexts(const WelcomeLayout& layout, const WelcomeContent& content);

  void Handle(int key);
  /// A login, and what it was for: after F2 a session, after F12 the host's end.
  void LogIn(int key);
  int RunLogin();
  void RunSession();
  void RunShutdown();
  void EndTimedOutSession();

  TarnCtl::Network::DnsConfigImpl dns_;
  AdapterAlert adapterAlert_;
};

}  // namespace Kiva
