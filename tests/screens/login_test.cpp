// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/screens/demo.h"

namespace Harness {
namespace {

using Json = nlohmann::json;

struct Attempt {
  const char* user;
  const char* password;
  const char* message;
  Lines lines;
};

TEST(Login, TellsEveryRefusalAndLeavesItsRecords) {
  const std::vector<Attempt> attempts = {
      {"root",
       "wrong",
       "Invalid login or password.",
       {"log.auth.err\tAuthentication of user root failed",
        "audit\tlogin.connect root 0 reason=Invalid Login",
        "log.info\tInitializing evbuser library",
        "event\t@&!*@*@(evb.user.kiva.login.failed)Authentication of user root failed"}},
      {"operator",
       "operator",
       "User does not have permission to login to KIVA.",
       {"log.auth.err\tAccess denied for user operator",
        "audit\tlogin.connect operator 0 reason=No permission",
        "log.info\tInitializing evbuser library",
        "event\t@&!*@*@(evb.user.kiva.login.failed)Access denied for user operator"}},
      {"expired",
       "expired",
       "Password has expired.",
       {"log.auth.err\tPassword has expired for user expired",
        "audit\tlogin.connect expired 0 reason=Password expired",
        "log.info\tInitializing evbuser library",
        "event\t@&!*@*@(evb.user.kiva.login.failed)Access denied for user expired"}},
  };
  Demo demo;
  demo.terminal.Press("F2");
  demo.NewLines();
  for (const Attempt& attempt : attempts) {
    demo.terminal.Press("Up");
    demo.terminal.Press("End");
    demo.terminal.Press("Backspace", 10);
    demo.terminal.Type(attempt.user);
    demo.terminal.Press("Enter");
    demo.terminal.Type(attempt.password);
    demo.terminal.Press("Enter");
    const Screen refusal = demo.terminal.WaitFor("Authentication failed");
    EXPECT_TRUE(refusal.Shows(attempt.message)) << refusal.Dump();
    EXPECT_FALSE(refusal.cursorVisible);
    EXPECT_EQ(demo.NewLines(), attempt.lines);
    demo.terminal.Press("Esc");
    EXPECT_TRUE(demo.terminal.Look().Shows(attempt.message)) << "Escape closes no message";
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
  demo.terminal.WaitFor("System Customization");
  demo.terminal.Press("Esc");
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

  demo.terminal.Press("Tab");
  demo.terminal.Type("secret");
  screen = demo.terminal.Look();
  EXPECT_TRUE(screen.Shows("[ ****** ")) << screen.Dump();
  EXPECT_FALSE(screen.Shows("secret"));
  demo.terminal.Press("Tab");
  demo.terminal.Type("admin");
  EXPECT_TRUE(demo.terminal.Look().Shows("[ admin ")) << "typing replaces what was put in";
  demo.terminal.Press("Tab", 2);
  demo.terminal.Type("2");
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
  demo.terminal.Press("F2");
  demo.terminal.Type("{serial-number}");
  EXPECT_TRUE(demo.terminal.Look().Shows("LKF-T24-00731")) << demo.terminal.Look().Dump();
}

TEST(Login, OffersTheKeyboardOnAConsole) {
  Demo demo({}, {24, 80}, "xterm");
  demo.terminal.Press("F2");
  EXPECT_TRUE(demo.terminal.Look().Shows("Configured Keyboard (English (US))"));
  demo.terminal.Press("Up");
  demo.terminal.Type("x");
  demo.terminal.Press("Down", 2);
  demo.terminal.Press("Tab");
  EXPECT_FALSE(demo.terminal.Look().cursorVisible) << "the label has the focus";
  demo.terminal.Press("Down", 2);
  demo.terminal.Type("demo");
  demo.terminal.Press("Enter");
  EXPECT_TRUE(demo.terminal.Look().Shows("Configure Keyboard"));
}

TEST(Login, AnEmptyPasswordIsAskedToBeChanged) {
  Demo demo;
  demo.terminal.Press("F2");
  demo.terminal.Type("guest");
  demo.terminal.Press("Enter", 2);
  const Screen screen = demo.terminal.WaitFor("System Customization");
  EXPECT_TRUE(screen.Shows("Not set")) << screen.Dump();
  EXPECT_TRUE(screen.Shows("Change default password to prevent")) << screen.Dump();
}

TEST(Login, GuardsTheShutDownToo) {
  Demo demo;
  demo.terminal.Press("F12");
  EXPECT_TRUE(demo.terminal.Look().Shows("Authentication Required"));
  demo.terminal.Press("Esc");
  EXPECT_TRUE(demo.terminal.Look().Shows("<F2> Customize"));
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
      demo.terminal.Press("F11");
      demo.terminal.Press("F2");
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

TEST(Login, AStackThatCannotAnswerRefuses) {
  struct Stack {
    const char* name;
    const char* service;
  };
  for (const Stack& stack :
       {Stack{"missing", nullptr}, {"denying", "auth required pam_deny.so\n"}}) {
    DemoHost host;
    std::filesystem::create_directory(host.Directory() / "pam.d");
    if (stack.service) std::ofstream(host.Directory() / "pam.d/kiva") << stack.service;
    Demo demo(host, {24, 80});
    demo.LogIn();
    EXPECT_TRUE(demo.terminal.WaitFor("Authentication failed").Shows("Invalid login or password."))
        << stack.name;
  }
}

}  // namespace
}  // namespace Harness
