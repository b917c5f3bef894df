// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>

#include "harness/demo.h"

using namespace Harness;

namespace {

TEST(Login, TellsEveryRefusalAndLeavesItsRecords) {
  const struct {
    std::string user;
    const char *message, *line, *reason, *event;
  } attempts[] = {
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
    demo.Do({"type:" + user, "Enter", "type:" + user, "Enter"});
    const Screen refusal = demo.WaitFor("Authentication failed");
    EXPECT_TRUE(refusal.Shows(message)) << refusal.Dump();
    EXPECT_FALSE(refusal.cursorVisible);
    EXPECT_EQ(demo.NewLines(),
              (Lines{std::string("log.auth.err\t") + line,
                     "audit\tlogin.connect " + user + " 0 reason=" + reason,
                     "log.info\tInitializing evbuser library",
                     std::string("event\t@&!*@*@(evb.user.kiva.login.failed)") + event}));
    demo.Press("Esc");
    EXPECT_TRUE(demo.Look().Shows(message)) << "Escape closes no message";
    demo.Press("Enter");
    if (user == "expired") demo.Do({"wait:Confirm Password:", "Esc"});
    const Screen again = demo.Look();
    EXPECT_TRUE(again.Shows("Password:            [                                ]"))
        << again.Dump();
    EXPECT_TRUE(again.cursorVisible);
  }
}

TEST(Login, LetsAnOperatorInAndOutWithItsRecords) {
  Demo demo;
  demo.NewLines();
  logIn(demo);
  demo.Press("Esc");
  EXPECT_TRUE(demo.Look().Shows("<F12> Shut Down/Restart"));
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
  demo.Press("F2");
  Screen screen = demo.WaitFor("Authentication Required");
  EXPECT_TRUE(screen.Shows("Enter an authorized login name and password for"));
  EXPECT_TRUE(screen.Shows("halo-01.example.test."));
  const Position name = *screen.Find("root");
  EXPECT_EQ(screen.ColoursAt(name.row, name.column), (Colours{0, 7})) << "selected";
  EXPECT_EQ(screen.ColoursAt(name.row, name.column - 3), (Colours{7, 0})) << "focused row";
  EXPECT_EQ(screen.ColoursAt(name.row + 1, name.column), (Colours{0, 3}));
  EXPECT_EQ(screen.ColoursAt(0, 0), (Colours{6, 0})) << "the owner is dimmed";
  EXPECT_EQ(screen.cursor, (Position{name.row, name.column + 4}));

  demo.Do({"Tab", "type:secret"});
  screen = demo.Look();
  EXPECT_TRUE(screen.Shows("[ ****** ")) << screen.Dump();
  EXPECT_FALSE(screen.Shows("secret"));
  demo.Do({"Tab", "type:admin"});
  EXPECT_TRUE(demo.Look().Shows("[ admin ")) << "typing replaces what was put in";
  demo.Do({"Tab", "Tab", "type:2"});
  EXPECT_TRUE(demo.Look().Shows("[ admin2 ")) << "but never what was typed";
  demo.Press("F3");
  screen = demo.Look();
  for (const char* text : {"Enter the smart card login PIN for",
                           "Login Id:", "PIN:", "<F3> Switch PIN/Password Login", "<Esc> Cancel"})
    EXPECT_TRUE(screen.Shows(text)) << text;
  demo.Do({"F3", "type:{serial-number}"});
  EXPECT_TRUE(demo.Look().Shows("Login Name:          [ LKF-T24-00731")) << demo.Look().Dump();
  demo.Press("Esc");
  screen = demo.Look();
  EXPECT_TRUE(screen.Shows("<F2> Customize"));
  EXPECT_FALSE(screen.cursorVisible);
  EXPECT_EQ(screen.ColoursAt(0, 0), (Colours{7, 6}));
}

TEST(Login, OffersTheKeyboardOnAConsole) {
  Demo demo({}, {.term = "xterm"});
  demo.Press("F2");
  EXPECT_TRUE(demo.Look().Shows("Configured Keyboard (English (US))"));
  demo.Do({"Up", "type:x", "Down", "Down", "Tab"});
  EXPECT_FALSE(demo.Look().cursorVisible) << "the label has the focus";
  demo.Do({"Down", "Down", "type:demo", "Enter"});
  demo.Press("Down", 6);
  const Screen screen = demo.Look();
  EXPECT_EQ(screen.Find("Configure Keyboard"), (Position{1, 42}));
  EXPECT_TRUE(screen.Shows("English (US)") && screen.Shows("To select the layout type for the"));
}

TEST(Login, AnEmptyPasswordIsAskedToBeChanged) {
  Demo demo;
  demo.Do({"F2", "type:guest", "Enter", "Enter"});
  const Screen screen = demo.WaitFor("System Customization");
  EXPECT_TRUE(screen.Shows("Not set")) << screen.Dump();
  EXPECT_TRUE(screen.Shows("Change default password to prevent")) << screen.Dump();
}

TEST(Login, SwitchedOffLetsNobodyIn) {
  DemoHost host;
  std::filesystem::remove(host.Root("/var/run/corvo/show-kiva-login"));
  Demo demo({}, std::move(host));
  for (const char* door : {"F2", "F12"})
    for (const char* key : {"Enter", "Esc"}) {
      demo.Press(door);
      const Screen screen = demo.WaitFor("Authentication Denied");
      EXPECT_TRUE(screen.Shows("Direct console access has been disabled by the"));
      demo.Do({"F11", "F2"});
      EXPECT_TRUE(demo.Look().Shows("Authentication Denied"));
      demo.Press(key);
      EXPECT_TRUE(demo.Look().Shows("<F2> Customize")) << door << key;
    }
}

TEST(Login, GoesOnWhenTheHostTellsNeitherNameNorLayout) {
  Demo demo({}, {.term = "xterm"});
  demo.host.Change({{"faults", {{"GetHostname", "no name"}, {"GetKeyboardLayout", "no layout"}}}});
  demo.Press("F2");
  const Screen screen = demo.Look();
  EXPECT_TRUE(screen.Shows("login name and password for ..")) << screen.Dump();
  EXPECT_TRUE(screen.Shows("Configured Keyboard ()"));
}

}  // namespace
