// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/screens/demo.h"

namespace Harness {
namespace {

using Json = nlohmann::json;

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
       "Password expired", "Access denied for user expired"},
  };
  Demo demo;
  demo.terminal.Press("F2");
  demo.NewLines();
  for (const auto& [user, message, line, reason, event] : attempts) {
    demo.terminal.Do({"Up", "End"});
    demo.terminal.Press("Backspace", 10);
    demo.terminal.Do({"type:" + user, "Enter", "type:" + user, "Enter"});
    const Screen refusal = demo.terminal.WaitFor("Authentication failed");
    EXPECT_TRUE(refusal.Shows(message)) << refusal.Dump();
    EXPECT_FALSE(refusal.cursorVisible);
    EXPECT_EQ(demo.NewLines(),
              (Lines{std::string("log.auth.err\t") + line,
                     "audit\tlogin.connect " + user + " 0 reason=" + reason,
                     "log.info\tInitializing evbuser library",
                     std::string("event\t@&!*@*@(evb.user.kiva.login.failed)") + event}));
    demo.terminal.Press("Esc");
    EXPECT_TRUE(demo.terminal.Look().Shows(message)) << "Escape closes no message";
    demo.terminal.Press("Enter");
    const Screen again = demo.terminal.Look();
    EXPECT_TRUE(again.Shows("Password:            [                                ]"))
        << again.Dump();
    EXPECT_TRUE(again.cursorVisible);
  }
}

TEST(Login, LetsAnOperatorInAndOutWithItsRecords) {
  Demo demo;
  demo.NewLines();
  demo.LogIn();
  demo.terminal.Do({"wait:System Customization", "Esc"});
  EXPECT_TRUE(demo.terminal.Look().Shows("<F12> Shut Down/Restart"));
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
  demo.terminal.Press("F2");
  Screen screen = demo.terminal.WaitFor("Authentication Required");
  EXPECT_TRUE(screen.Shows("Enter an authorized login name and password for"));
  EXPECT_TRUE(screen.Shows("halo-01.example.test."));
  const Position name = *screen.Find("root");
  EXPECT_EQ(screen.ColoursAt(name.row, name.column), (Colours{0, 7})) << "selected";
  EXPECT_EQ(screen.ColoursAt(name.row, name.column - 3), (Colours{7, 0})) << "focused row";
  EXPECT_EQ(screen.ColoursAt(name.row + 1, name.column), (Colours{0, 3}));
  EXPECT_EQ(screen.ColoursAt(0, 0), (Colours{6, 0})) << "the owner is dimmed";
  EXPECT_EQ(screen.cursor, (Position{name.row, name.column + 4}));

  demo.terminal.Do({"Tab", "type:secret"});
  screen = demo.terminal.Look();
  EXPECT_TRUE(screen.Shows("[ ****** ")) << screen.Dump();
  EXPECT_FALSE(screen.Shows("secret"));
  demo.terminal.Do({"Tab", "type:admin"});
  EXPECT_TRUE(demo.terminal.Look().Shows("[ admin ")) << "typing replaces what was put in";
  demo.terminal.Do({"Tab", "Tab", "type:2"});
  EXPECT_TRUE(demo.terminal.Look().Shows("[ admin2 ")) << "but never what was typed";
  demo.terminal.Press("F3");
  screen = demo.terminal.Look();
  for (const char* text : {"Enter the smart card login PIN for",
                           "Login Id:", "PIN:", "<F3> Switch PIN/Password Login", "<Esc> Cancel"})
    EXPECT_TRUE(screen.Shows(text)) << text;
  demo.terminal.Press("F3");
  EXPECT_TRUE(demo.terminal.Look().Shows("Login Name:")) << "back in password mode";
  demo.terminal.Press("Esc");
  screen = demo.terminal.Look();
  EXPECT_TRUE(screen.Shows("<F2> Customize"));
  EXPECT_FALSE(screen.cursorVisible);
  EXPECT_EQ(screen.ColoursAt(0, 0), (Colours{7, 6}));
}

TEST(Login, TypedMarkupIsLiveInTheNameField) {
  Demo demo;
  demo.terminal.Do({"F2", "type:{serial-number}"});
  EXPECT_TRUE(demo.terminal.Look().Shows("LKF-T24-00731")) << demo.terminal.Look().Dump();
}

TEST(Login, OffersTheKeyboardOnAConsole) {
  Demo demo({}, {24, 80}, "xterm");
  demo.terminal.Press("F2");
  EXPECT_TRUE(demo.terminal.Look().Shows("Configured Keyboard (English (US))"));
  demo.terminal.Do({"Up", "type:x", "Down", "Down", "Tab"});
  EXPECT_FALSE(demo.terminal.Look().cursorVisible) << "the label has the focus";
  demo.terminal.Do({"Down", "Down", "type:demo", "Enter"});
  EXPECT_TRUE(demo.terminal.Look().Shows("Configure Keyboard"));
}

TEST(Login, AnEmptyPasswordIsAskedToBeChanged) {
  Demo demo;
  demo.terminal.Do({"F2", "type:guest", "Enter", "Enter"});
  const Screen screen = demo.terminal.WaitFor("System Customization");
  EXPECT_TRUE(screen.Shows("Not set")) << screen.Dump();
  EXPECT_TRUE(screen.Shows("Change default password to prevent")) << screen.Dump();
}

TEST(Login, SwitchedOffLetsNobodyIn) {
  DemoHost host;
  std::filesystem::remove(host.Root("/var/run/corvo/show-kiva-login"));
  Demo demo(host, {24, 80});
  for (const char* door : {"F2", "F12"})
    for (const char* key : {"Enter", "Esc"}) {
      demo.terminal.Press(door);
      const Screen screen = demo.terminal.WaitFor("Authentication Denied");
      EXPECT_TRUE(screen.Shows("Direct console access has been disabled by the"));
      demo.terminal.Do({"F11", "F2"});
      EXPECT_TRUE(demo.terminal.Look().Shows("Authentication Denied"));
      demo.terminal.Press(key);
      EXPECT_TRUE(demo.terminal.Look().Shows("<F2> Customize")) << door << key;
    }
}

TEST(Login, GoesOnWhenTheHostTellsNeitherNameNorLayout) {
  Demo demo({}, {24, 80}, "xterm");
  demo.host.Change({{"faults", {{"GetHostname", "no name"}, {"GetKeyboardLayout", "no layout"}}}});
  demo.terminal.Press("F2");
  const Screen screen = demo.terminal.Look();
  EXPECT_TRUE(screen.Shows("login name and password for ..")) << screen.Dump();
  EXPECT_TRUE(screen.Shows("Configured Keyboard ()"));
}

}  // namespace
}  // namespace Harness
