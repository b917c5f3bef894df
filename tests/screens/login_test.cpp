// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "harness/demo.h"

using namespace Harness;

namespace {

TEST(Login, TellsEveryRefusalAndLeavesItsRecords) {
  const std::array<std::string, 5> attempts[] = {
      {"root", "Invalid login or password.", "Authentication of user root failed", "Invalid Login",
       "Authentication of user root failed"},
      {"operator", "User does not have permission to login to KIVA.",
       "Access denied for user operator", "No permission", "Access denied for user operator"},
      {"expired", "Password has expired.", "Password has expired for user expired",
       "Password expired", "Access denied for user expired"}};
  Demo demo;
  demo.Press("F2");
  demo.NewLines();
  for (const auto& [user, message, line, reason, event] : attempts) {
    demo.Do({"Up", "End"});
    demo.Press("Backspace", 10);
    demo.Do({"type:" + user, "Enter", "type:" + user, "Enter", "wait:Authentication failed"});
    EXPECT_FALSE(demo.WaitFor(message).cursorVisible);
    EXPECT_EQ(demo.NewLines(), (Lines{"log.auth.err\t" + line,
                                      "audit\tlogin.connect " + user + " 0 reason=" + reason,
                                      "log.info\tInitializing evbuser library",
                                      "event\t@&!*@*@(evb.user.kiva.login.failed)" + event}));
    demo.Do({"Esc", "wait:" + message, "Enter"});  // Escape closes no message
    if (user == "expired") demo.Do({"wait:Confirm Password:", "Esc"});
    EXPECT_TRUE(demo.WaitFor("Password:            [                    ").cursorVisible);
  }
}

TEST(Login, LetsAnOperatorInAndOutWithItsRecords) {
  Demo demo;
  demo.NewLines();
  logIn(demo);
  demo.Do({"Esc", "wait:<F12> Shut Down/Restart"});
  EXPECT_EQ(demo.NewLines(),
            (Lines{"log.auth.emerg\tAuthentication of user root succeeded",
                   "log.info\tUser root logged in", "audit\tlogin.connect root 1",
                   "log.info\tCOLS=80, LINES=24",
                   "log.info\thmx-cmd invocation: get hmxsvc/auth/lockdown_is_enabled",
                   "run\t/bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_is_enabled",
                   "log.info\thmx-cmd invocation: get hmxsvc/auth/lockdown_is_possible",
                   "run\t/bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_is_possible",
                   "log.info\tUser root logged out",
                   "audit\tlogin.disconnect root 1 reason=Session closed"}));
}

TEST(Login, DialogLooksAndTakesKeysAsItSays) {
  Demo demo;
  demo.Do({"F2", "wait:Enter an authorized login name and password for"});
  Screen screen = demo.WaitFor("halo-01.example.test.");
  const Position name = *screen.Find("root");
  EXPECT_EQ(screen.ColoursAt(name.row, name.column), (Colours{0, 7})) << "selected";
  EXPECT_EQ(screen.ColoursAt(name.row, name.column - 3), (Colours{7, 0})) << "focused row";
  EXPECT_EQ(screen.ColoursAt(name.row + 1, name.column), (Colours{0, 3}));
  EXPECT_EQ(screen.ColoursAt(0, 0), (Colours{6, 0})) << "the owner is dimmed";
  EXPECT_EQ(screen.cursor, (Position{name.row, name.column + 4}));

  demo.Do({"Tab", "type:secret", "wait:[ ****** "});
  EXPECT_FALSE(demo.Look().Shows("secret"));
  // Typing replaces what was put in, but never what was typed.
  demo.Do({"Tab", "type:admin", "wait:[ admin ", "Tab", "Tab", "type:2\001\303\244",
           "wait:[ admin2  "});
  demo.Do({"F3", "wait:Enter the smart card login PIN for", "wait:Login Id:", "wait:PIN:",
           "wait:<F3> Switch PIN/Password Login", "wait:<Esc> Cancel"});
  demo.Do({"F3", "type:{serial-number}", "wait:Login Name:          [ LKF-T24-00731", "Esc"});
  screen = demo.WaitFor("<F2> Customize");
  EXPECT_FALSE(screen.cursorVisible);
  EXPECT_EQ(screen.ColoursAt(0, 0), (Colours{7, 6}));
  demo.host.Change(failing("GetHostname", "no name"));
  demo.Do({"F2", "wait:login name and password for .."});
}

TEST(Login, OffersTheKeyboardOnAConsole) {
  Demo demo({}, {.term = "xterm"});
  demo.Do({"F2", "wait:Configured Keyboard (English (US))", "Up", "type:x", "Down", "Down", "Tab"});
  EXPECT_FALSE(demo.Look().cursorVisible) << "the label has the focus";
  demo.Do({"Down", "Down", "type:demo", "Enter", "wait:System Customization"});
}

TEST(Login, SwitchedOffLetsNobodyIn) {
  DemoHost host;
  std::filesystem::remove(host.Root("/var/run/corvo/show-kiva-login"));
  Demo demo({}, std::move(host));
  for (const char* door : {"F2", "F12"})
    for (const char* key : {"Enter", "Esc"})
      demo.Do({door, "wait:Direct console access has been disabled by the", "F11", "F2",
               "wait:Authentication Denied", key, "wait:<F2> Customize"});
}

}  // namespace
