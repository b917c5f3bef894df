// SPDX-License-Identifier: MIT
// The dialogs that change a password and the host's lockdown mode, up to what the host is told.
#include <gtest/gtest.h>

#include <csignal>

#include "harness/demo.h"

using namespace Harness;

namespace {

/// Escape counts at once.
const Setup kPrompt{.environment = {{"ESCDELAY", "25"}}};
constexpr const char* kOldIsRight = "type:demo\t";
constexpr const char* kStoreFailed = "Error while storing user account";
const std::string kStoreWarning =
    "log.warning\tError while storing user account information to persistent storage. The new "
    "information may not be available after reboot. Error: out of space";

void openPassword(Demo& demo) {
  logIn(demo);
  demo.Do({"Enter", "wait:Old Password:"});
  demo.NewLines();
}

/// The field that the cursor stands in; negative without a cursor.
int focus(const Screen& screen) {
  const auto first = screen.Find("Old Password:");
  return screen.cursorVisible && first ? static_cast<int>(screen.cursor.row - first->row) : -1;
}

/// What the three fields hold, as it is shown.
Lines fields(const Screen& screen) {
  Lines shown;
  for (const char* label : {"Old Password:", "New Password:", "Confirm Password:"}) {
    const std::string row = screen.Row(screen.Find(label)->row);
    const auto start = row.find("[ ") + 2;
    shown.push_back(row.substr(start, row.find(' ', start) - start));
  }
  return shown;
}

Lines changed(const std::string& user, Lines lines = {"hostctl\tStoreUserAccountsToCs"}) {
  lines.insert(lines.end(),
               {"run\t/sbin/backup.sh backup.sh 0",
                "run\t/bin/hmx-cmd hmx-cmd -U " + user + " internalsvc/refresh",
                "log.info\tLogin password for user " + user + " has changed",
                "log.info\tInitializing evbuser library",
                "event\t@&!*@*@(evb.user.kiva.login.passwd.changed)Login password for user " +
                    user + " changed"});
  return lines;
}

TEST(Password, KeysMoveAsTheDialogSays) {
  const std::pair<Lines, int> walks[] = {{{"Up"}, 0},
                                         {{kOldIsRight}, 1},
                                         {{"type:demo", "Down"}, 1},
                                         {{"type:demo", "Enter"}, 1},
                                         {{"type:demo", "F3", "PageDown", "F11"}, 0},
                                         {{kOldIsRight, "Up"}, 1},
                                         {{kOldIsRight, "Down"}, 2},
                                         {{kOldIsRight, "Tab"}, 2},
                                         {{kOldIsRight, "Enter"}, 2},
                                         {{kOldIsRight, "Tab", "Down"}, 2},
                                         {{kOldIsRight, "Tab", "Up"}, 1},
                                         {{kOldIsRight, "Tab", "Tab"}, 1}};
  Demo demo({}, kPrompt);
  openPassword(demo);
  for (const auto& [keys, field] : walks) {
    demo.Do(keys);
    EXPECT_EQ(focus(demo.Look()), field) << keys.back();
    demo.Press("Esc");
    EXPECT_EQ(focus(demo.Look()), -1);
    demo.Do({"Enter", "wait:Old Password:"});
    EXPECT_EQ(fields(demo.Look()), (Lines{"", "", ""})) << "nothing stays from opening to opening";
  }
  EXPECT_EQ(demo.NewLines(), Lines{}) << "looking round changes nothing";
}

TEST(Password, FieldsHideWhateverIsTyped) {
  Demo demo;
  openPassword(demo);
  demo.Type("{hostname}ü~");
  EXPECT_EQ(fields(demo.Look())[0], "*************");
  demo.Do({"Home", "Delete", "End", "Backspace"});
  EXPECT_EQ(fields(demo.Look())[0], "***********");
  demo.host.Set("/accounts/0/password", "hostname}\xc3\xbc");
  demo.Press("Enter");
  EXPECT_EQ(focus(demo.Look()), 1) << "every byte of it counts";
}

TEST(Password, TellsWhyItRefuses) {
  const struct {
    Lines keys;
    const char* message;
    Lines left;
    int focus;
  } cases[] = {
      {{"type:Demo", "Down"}, "The old password you entered is incorrect", {"", "", ""}, 0},
      {{kOldIsRight, "type:long-enough\tlong-enouhg", "Enter"},
       "The new password and the confirmed password do not",
       {"****", "", ""},
       1},
      {{kOldIsRight, "Tab", "Enter"}, "Empty passwords are not allowed.", {"****", "", ""}, 1},
      {{kOldIsRight, "type:short\tshort", "Enter"},
       "Please ensure that your password meets the complexity",
       {"****", "", ""},
       1},
      {{kOldIsRight, "type:demo\tdemo", "Enter", "wait:same as old", "type:\t ", "Enter"},
       "The password change operation failed.",
       {"****", "", ""},
       1},
  };
  Demo demo({}, kPrompt);
  openPassword(demo);
  for (const auto& one : cases) {
    SCOPED_TRACE(one.message);
    demo.Do(one.keys);
    EXPECT_TRUE(demo.WaitFor("Configure Password: Error").Shows(one.message));
    demo.Press("Enter");
    EXPECT_EQ(fields(demo.Look()), one.left);
    EXPECT_EQ(focus(demo.Look()), one.focus);
    demo.Do({"Esc", "Enter", "wait:Old Password:"});
  }
  demo.Do({kOldIsRight, "type:demo\tdemo\n", "wait:Configure Password: Warning", "Esc"});
  EXPECT_EQ(fields(demo.Look()), (Lines{"****", "****", "****"})) << "as they were";
  EXPECT_EQ(focus(demo.Look()), 2);
  EXPECT_EQ(demo.NewLines(), Lines{});
}

TEST(Password, AChangeIsMadeToLast) {
  const std::string refresh = "internalsvc/refresh";
  Lines fallback = changed("root");
  fallback.insert(fallback.begin() + 3,
                  {"log.info\tUnable to execute command hmx-cmd internalsvc/refresh using user "
                   "root. Using user kiva",
                   "run\t/bin/hmx-cmd hmx-cmd -U kiva internalsvc/refresh"});
  const struct {
    const char *changes, *secret, *message;
    Lines lines;
  } cases[] = {{"{}", "long-enough", nullptr, changed("root")},
               {R"({"minimumPasswordLength": 4})", "demo", "same as old", changed("root")},
               {R"({"features": {"UserAccountsInConfigStore": false}})", "new-one", nullptr,
                changed("root", {})},
               {R"({"tools": {"/sbin/backup.sh": {"status": 1}, "/bin/hmx-cmd": {"status": 255}}})",
                "new-one", nullptr, fallback},
               {R"({"faults": {"StoreUserAccountsToCs": "out of space"}})", "new-one", kStoreFailed,
                changed("root", {kStoreWarning})},
               {R"({"faults": {"FeatureList": "out of space"}})", "new-one", kStoreFailed,
                changed("root", {kStoreWarning})}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.changes);
    Demo demo(Json::parse(one.changes), kPrompt);
    openPassword(demo);
    // All in one go: nothing on the way drops what was typed ahead, but the Escape behind it, which
    // would log out, comes too late for the dialog and too early for what is next.
    const std::string secret = one.secret;
    demo.Type("demo\t" + secret + "\t" + secret + "\n\033");
    if (one.message) demo.Do({std::string("wait:") + one.message, "Enter"});
    EXPECT_TRUE(demo.WaitForGone("Password:").Shows("<Esc> Log Out")) << demo.Look().Dump();
    EXPECT_EQ(demo.NewLines(), one.lines);
    EXPECT_EQ(demo.host.State()["accounts"][0]["password"], secret);
    demo.Do({"Esc", "F2", "Enter", "type:" + secret, "Enter", "wait:System Customization"});
  }
}

TEST(Password, TheMenuShowsThatAnEmptyOneIsSetNow) {
  Demo demo;
  demo.Do({"F2", "type:guest", "Enter", "Enter", "wait:Not set", "Enter"});
  demo.Do({"type:\tlong-enough\tlong-enough\n", "gone:Old Password:"});
  EXPECT_TRUE(demo.Look().Shows("  Set  ")) << demo.Look().Dump();
}

TEST(Password, AnExpiredOneIsChangedOnTheWayIn) {
  Demo demo;
  demo.Do({"F2", "type:expired", "Enter", "type:expired", "Enter", "wait:will be prompted", "Enter",
           "type:expired", "Enter"});
  EXPECT_EQ(focus(demo.Look()), 1) << "right, although it has expired";
  demo.NewLines();
  demo.Do({"type:long-enough", "Enter", "type:long-enough", "Enter"});
  const Screen login = demo.WaitFor(kLogin);
  EXPECT_TRUE(login.Shows("Login Name:          [ expired ")) << login.Dump();
  EXPECT_TRUE(login.Shows("Password:            [                ")) << login.Dump();
  EXPECT_EQ(demo.NewLines(), changed("expired"));
  demo.Do({"type:long-enough", "Enter"});
  demo.WaitFor(kMenu);
}

TEST(Password, NoCoreFileWhileOneIsHeld) {
  Demo demo({}, {.script = R"(ulimit -S -c $(ulimit -H -c); exec "$0" "$@")"});
  const auto coreLimit = [&] {
    std::ifstream file("/proc/" + std::to_string(demo.Pid()) + "/limits");
    for (std::string line; std::getline(file, line);)
      if (line.starts_with("Max core file size")) return line.substr(26, line.find(' ', 26) - 26);
    return std::string();
  };
  const std::string before = coreLimit();
  if (before == "0") GTEST_SKIP() << "nobody may write core files here";
  demo.Do({"F2", "Tab", "type:x"});
  EXPECT_EQ(coreLimit(), "0");
  demo.Press("Backspace");
  EXPECT_EQ(coreLimit(), before);
  demo.Do({"type:demo", "Enter", "wait:System Customization"});
  EXPECT_EQ(coreLimit(), before);
  demo.Do({"Enter", "type:demo\tlong-enough\t"});
  EXPECT_EQ(coreLimit(), "0");
  demo.Press("Esc");
  EXPECT_EQ(coreLimit(), before);
}

void openLockdown(Demo& demo) {
  logIn(demo);
  demo.Do({"Down", "Enter", "wait:Enable lockdown mode"});
}

TEST(Lockdown, AsksTheHostAndTellsIt) {
  const std::string query = "log.info\thmx-cmd invocation: get hmxsvc/auth/lockdown_is_enabled";
  const std::string asked = "run\t/bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_is_enabled";
  const std::string enter = "run\t/bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_mode_enter";
  const std::string leave = "run\t/bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_mode_exit";
  const struct {
    const char* name;
    Json tool;
    const char *box, *keys;
    Lines lines;
    const char* state;
  } cases[] = {
      {"given up", {{"status", 0}}, "[ ]", " \033", {}, nullptr},
      {"as it was", {{"status", 0}}, "[ ]", "\n", {query, asked}, "Disabled"},
      {"twice", {{"status", 0}, {"stdout", "true\n"}}, "[X]", "  \n", {query, asked}, "Enabled"},
      {"on, typed ahead",
       {{"status", 0}},
       "[ ]",
       " \n\033",
       {enter, "log.info\tLockdown mode enabled", query, asked},
       "Disabled"},
      {"off",
       {{"status", 0}, {"stdout", "true"}},
       "[X]",
       " \n",
       {leave, "log.info\tLockdown mode disabled", query, asked},
       "Enabled"},
      {"failing",
       {{"status", 1}, {"stdout", "true"}, {"stderr", "no agent"}},
       "[ ]",
       " \n",
       {enter, "log.err\tEnabling lockdown mode failed with error: no agent", query, asked,
        "log.err\thmx-cmd invocation failure: Success"},
       "Disabled"}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.name);
    Demo demo({}, kPrompt);
    logIn(demo);
    demo.Press("Down");
    demo.host.Set("/tools/~1bin~1hmx-cmd", one.tool);
    demo.Press("Enter");
    demo.NewLines();
    const Screen dialog = demo.Look();
    EXPECT_TRUE(dialog.Shows(std::string(one.box) + " Enable lockdown mode")) << dialog.Dump();
    EXPECT_FALSE(dialog.cursorVisible);
    demo.Type(one.keys);
    const Screen menu = demo.WaitForGone("Enable lockdown mode");
    EXPECT_TRUE(menu.Shows(one.state ? one.state : "Disabled")) << menu.Dump();
    EXPECT_TRUE(menu.Shows("<Esc> Log Out")) << "an Escape typed ahead does not log out";
    EXPECT_EQ(demo.NewLines(), one.lines);
  }
}

TEST(Password, AStopSignalEndsEveryDialog) {
  void (*const places[])(Demo&) = {
      openPassword, openLockdown,
      [](Demo& demo) {
        openPassword(demo);
        demo.Do({"type:demo\tdemo\tdemo\n", "wait:Are you sure?"});
      },
      [](Demo& demo) {
        openPassword(demo);
        demo.Do({"type:x\t", "wait:is incorrect"});
      },
      [](Demo& demo) {
        demo.Do({"F2", "type:expired\texpired\n", "wait:Password has expired", "Enter"});
        demo.WaitFor("Old Password:");
      }};
  for (const auto& reach : places) {
    Demo demo;
    reach(demo);
    EXPECT_EQ(demo.Stop(), 0) << &reach - places;
  }
}

}  // namespace
