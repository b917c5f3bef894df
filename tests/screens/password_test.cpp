// SPDX-License-Identifier: MIT
// The dialogs that change a password and the host's lockdown mode, up to what the host is told.
#include <gtest/gtest.h>

#include <algorithm>

#include "harness/demo.h"

using namespace Harness;

namespace {

/// Escape counts at once.
const Setup kPrompt{.environment = {{"ESCDELAY", "25"}}};
const std::string kNotStored =
    "log.warning\tError while storing user account information to persistent storage. The new "
    "information may not be available after reboot. Error: full";

void openPassword(Demo& demo) {
  logIn(demo);
  demo.Do({"Enter", "wait:Old Password:"});
  demo.NewLines();
}

/// The field that the cursor stands in, and how many characters are hidden: "1:4".
std::string shown(const Screen& screen) {
  const std::string text = screen.Text();
  const auto row = screen.cursor.row - screen.Find("Old Password:").value().row;
  return std::to_string(row) + ":" + std::to_string(std::count(text.begin(), text.end(), '*'));
}

Lines changed(const std::string& user, const Lines& stored) {
  Lines lines = {"run\t/sbin/backup.sh backup.sh 0",
                 "run\t/bin/hmx-cmd hmx-cmd -U " + user + " internalsvc/refresh",
                 "log.info\tLogin password for user " + user + " has changed",
                 "log.info\tInitializing evbuser library",
                 "event\t@&!*@*@(evb.user.kiva.login.passwd.changed)Login password for user " +
                     user + " changed"};
  lines.insert(lines.begin(), stored.begin(), stored.end());
  return lines;
}

TEST(Password, TakesKeysAndTellsWhyItRefuses) {
  // Cursor keys are "ESC O A" (up) and "ESC O B" (down); "ESC [ 5 ~" means nothing here.
  const std::pair<std::string, std::string> walks[] = {{"\033OA", "0:0"},
                                                       {"demo\033[5~", "0:4"},
                                                       {"{hostname}ü~", "0:13"},
                                                       {"demo\033OB", "1:4"},
                                                       {"demo\n", "1:4"},
                                                       {"demo\t\033OA", "1:4"},
                                                       {"demo\t\033OB", "2:4"},
                                                       {"demo\t\n", "2:4"},
                                                       {"demo\tx\t", "2:5"},
                                                       {"demo\t\t\033OB", "2:4"},
                                                       {"demo\t\tx\033OA", "1:5"},
                                                       {"demo\tx\tyz\t", "1:7"},
                                                       {"demox\033ODyz\177\177\033[3~", "0:4"}};
  const Lines refusals[] = {
      {"type:Demo\033OB", "wait:The old password you entered is incorrect", "0:0"},
      {"type:demo\tlong-enough\tlong-enouhg\n", "wait:the confirmed password do not", "1:4"},
      {"type:demo\t\t\n", "wait:Empty passwords are not allowed.", "1:4"},
      {"type:demo\tshort\tshort\n", "wait:password meets the complexity", "1:4"},
      {"type:demo\tdemo\tdemo\n\n", "wait:same as old password. Are you sure?", "2:12"}};
  Demo demo({}, kPrompt);
  openPassword(demo);
  const auto expect = [&](const std::string& state) {
    EXPECT_EQ(shown(demo.Look()), state) << demo.Look().Dump();
    demo.Do({"Esc", "gone:Old Password:", "Enter", "wait:Old Password:"});
    EXPECT_EQ(shown(demo.Look()), "0:0") << "nothing stays from opening to opening";
  };
  for (const auto& [keys, state] : walks) {
    demo.Type(keys);
    expect(state);
  }
  for (const Lines& refusal : refusals) {
    demo.Do({refusal[0], refusal[1], &refusal == &refusals[4] ? "Esc" : "Enter"});
    expect(refusal[2]);
  }
  demo.Do({"type:demo\tdemo\tdemo\n", "wait:Are you sure?", "Enter", "wait:operation failed.",
           "Enter"});
  expect("1:4");
  EXPECT_EQ(demo.NewLines(), Lines{}) << "the host hears nothing of all this";
  demo.host.Set("/accounts/0/password", "{hostname}ü~");
  demo.Type("{hostname}ü~\t");
  EXPECT_EQ(shown(demo.Look()), "1:13") << "every byte counts";
}

TEST(Password, AChangeIsMadeToLast) {
  const Lines stored = {"hostctl\tStoreUserAccountsToCs"}, failed = {kNotStored};
  const struct {
    const char *changes, *secret, *message;
    Lines stored;
  } cases[] = {
      {R"({"tools": {"/sbin/backup.sh": {"status": 1}}})", "long-enough", nullptr, stored},
      {R"({"minimumPasswordLength": 4})", "demo", "same as old", stored},
      {R"({"features": {"UserAccountsInConfigStore": false}})", "new-one", nullptr, {}},
      {R"({"faults": {"StoreUserAccountsToCs": "full"}})", "new-one", "Error while", failed},
      {R"({"faults": {"FeatureList": "full"}})", "new-one", "Error while", failed}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.changes);
    Demo demo(Json::parse(one.changes), kPrompt);
    openPassword(demo);
    // In one go: what was typed ahead counts up to the Enter, but the Escape behind it would log
    // out.
    const std::string secret = one.secret;
    demo.Type("demo\t" + secret + "\t" + secret + "\n\033");
    if (one.message) demo.Do({std::string("wait:") + one.message, "Enter"});
    EXPECT_TRUE(demo.WaitForGone("Password:").Shows("<Esc> Log Out")) << demo.Look().Dump();
    EXPECT_EQ(demo.NewLines(), changed("root", one.stored));
    demo.Do({"Esc", "F2", "Enter", "type:" + secret, "Enter", "wait:System Customization"});
  }
}

TEST(Password, TheMenuShowsThatAnEmptyOneIsSetNow) {
  Demo demo;
  demo.Do({"F2", "type:guest\n", "Enter", "wait:Not set", "Enter",
           "type:\tlong-enough\tlong-enough\n", "gone:Old Password:"});
  EXPECT_TRUE(demo.Look().Shows("  Set  ")) << demo.Look().Dump();
}

TEST(Password, AnExpiredOneIsChangedOnTheWayIn) {
  Demo demo;
  demo.Do({"F2", "type:expired\nexpired\n", "wait:will be prompted", "Enter", "type:expired\t"});
  demo.NewLines();
  demo.Do({"type:long-enough\tlong-enough\n", "wait:Login Name:          [ expired "});
  EXPECT_FALSE(demo.Look().Shows("*")) << "the new one is to be typed";
  EXPECT_EQ(demo.NewLines(), changed("expired", {"hostctl\tStoreUserAccountsToCs"}));
  demo.Do({"type:long-enough\n", "wait:System Customization"});
}

TEST(Password, NoCoreFileWhileOneIsHeld) {
  Demo demo({}, {.environment = {{"ESCDELAY", "25"}},
                 .script = R"(ulimit -S -c $(ulimit -H -c); exec "$0" "$@")"});
  const auto coreLimit = [&] {
    std::string line;
    for (std::ifstream file("/proc/" + std::to_string(demo.Pid()) + "/limits");
         !line.starts_with("Max core") && std::getline(file, line);) {
    }
    return line.substr(26, 9);
  };
  const std::string before = coreLimit();
  for (const std::string step : {"F2", "type:\tx", "Backspace", "type:x", "Esc", "F2", "type:\td",
                                 "type:emo\n", "Enter", "type:demo\tlong-enough\t", "Esc"}) {
    demo.Do({step});
    const bool held = step.starts_with("type:") && !step.ends_with("\n");
    EXPECT_EQ(coreLimit(), held ? "0        " : before) << step;
  }
}

TEST(Lockdown, AsksTheHostAndTellsIt) {
  const std::string hmx = "run\t/bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_";
  const char* noAgent = R"({"/bin/hmx-cmd": {"status": 1, "stderr": "no agent"}})";
  const char* notAsUser = R"({"/bin/hmx-cmd": {"status": 255}})";
  const std::string failed = "log.err\tEnabling lockdown mode failed with error: ";
  const struct {
    const char *keys, *box, *state, *command;
    std::string line;
    const char* tools = "{}";
  } steps[] = {{" \033", "[ ]", "Disabled", "", ""},
               {"  \n\033", "[ ]", "Disabled", "", ""},
               {"\033OB \n\033", "[ ]", "Enabled", "mode_enter", "log.info\tLockdown mode enabled"},
               {"\n", "[X]", "Enabled", "", ""},
               {" \n", "[X]", "Disabled", "mode_exit", "log.info\tLockdown mode disabled"},
               {" \n", "[ ]", "Disabled", "mode_enter", failed + "no agent", noAgent},
               {" \n", "[ ]", "Disabled", "mode_enter", failed, notAsUser}};
  Demo demo({}, kPrompt);
  logIn(demo);
  demo.Press("Down");
  for (const auto& [keys, box, state, command, line, tools] : steps) {
    SCOPED_TRACE(keys + line);
    demo.host.Set("/tools", Json::parse(tools));
    demo.Do({"Enter", std::string("wait:") + box + " Enable lockdown mode"});
    demo.NewLines();
    demo.Type(keys);
    const Screen menu = demo.WaitForGone("Enable lockdown mode");
    EXPECT_TRUE(menu.Shows(state) && menu.Shows("<Esc> Log Out")) << menu.Dump();
    Lines lines;
    if (*command) lines = {hmx + command, line};
    if (std::string(keys) != " \033")
      lines.insert(lines.end(),
                   {"log.info\thmx-cmd invocation: get hmxsvc/auth/lockdown_is_enabled",
                    hmx + "is_enabled"});
    if (std::string(tools) != "{}") lines.push_back("log.err\thmx-cmd invocation failure: Success");
    EXPECT_EQ(demo.NewLines(), lines);
  }
}

TEST(Password, AStopSignalEndsEveryDialog) {
  const Lines ways[] = {{"Enter", "wait:Old Password:"},
                        {"Enter", "type:demo\tdemo\tdemo\n", "wait:Are you sure?"},
                        {"Enter", "type:x\t", "wait:is incorrect"},
                        {"Down", "Enter", "wait:Enable lockdown mode"},
                        {"Esc", "F2", "type:expired\nexpired\n", "wait:has expired", "Enter"}};
  for (const auto& way : ways) {
    Demo demo({}, kPrompt);
    logIn(demo);
    demo.Do(way);
    EXPECT_EQ(demo.Stop(), 0) << way.back();
  }
}

}  // namespace
