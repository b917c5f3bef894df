// SPDX-License-Identifier: MIT
// The dialogs that change a password and the host's lockdown mode, up to what the host is told.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>

#include "harness/demo.h"

using namespace Harness;

namespace {

const char* const kNotStored =
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

const std::string kBackup = "run\t/sbin/backup.sh backup.sh 0";
const Lines kHead = {"hostctl\tStoreUserAccountsToCs", kBackup};

std::string refreshed(const std::string& user) {
  return "run\t/bin/hmx-cmd hmx-cmd -U " + user + " internalsvc/refresh";
}

Lines told(const std::string& user) {
  const std::string what = "Login password for user " + user;
  return {"log.info\t" + what + " has changed", "log.info\tInitializing evbuser library",
          "event\t@&!*@*@(evb.user.kiva.login.passwd.changed)" + what + " changed"};
}

TEST(Password, TakesKeysAndTellsWhyItRefuses) {
  // Cursor keys are "ESC O A" (up) and "ESC O B" (down); "ESC [ 5 ~" means nothing here.
  const Lines walks[] = {
      {"type:\033OA", "0:0"},
      {"type:demo\033[5~", "0:4"},
      {"type:demo\033OB\033OA", "1:4"},
      {"type:demo\n", "1:4"},
      {"type:demo\t\033OB", "2:4"},
      {"type:demo\t\n", "2:4"},
      {"type:demo\tx\t", "2:5"},
      {"type:demo\t\tx\033OA", "1:5"},
      {"type:demo\tx\tyz\t", "1:7"},
      {"type:demox\033ODyz\177\177\033[3~", "0:4"},
      {"type:Demo\033OB", "wait:The old password you entered is incorrect", "Enter", "0:0"},
      {"type:demo\tlong-enough\tlong-enouhg\n", "wait:confirmed password do not", "Enter", "1:4"},
      {"type:demo\t\t\n", "wait:Empty passwords are not allowed.", "Enter", "1:4"},
      {"type:demo\tshort\tshort\n", "wait:password meets the complexity", "Enter", "1:4"},
      {"type:demo\tdemo\tdemo\n\n", "wait:same as old password. Are you sure?", "Esc", "2:12"},
      {"type:demo\tdemo\tdemo\n", "Enter", "wait:change operation failed.", "Enter", "1:4"}};
  Demo demo({}, kQuickEscape);
  openPassword(demo);
  for (const Lines& walk : walks) {
    demo.Do({walk.begin(), walk.end() - 1});
    EXPECT_EQ(shown(demo.Look()), walk.back()) << demo.Look().Dump();
    demo.Do({"Esc", "gone:Old Password:", "Enter", "wait:Old Password:"});
    EXPECT_EQ(shown(demo.Look()), "0:0") << "nothing stays from opening to opening";
  }
  EXPECT_EQ(demo.NewLines(), Lines{}) << "the host hears nothing of all this";
  demo.host.Set("/accounts/0/permission", false);
  demo.Do({"type:demo\t", "wait:old password you entered is incorrect", "Enter"});
  demo.host.Set("/accounts/0/permission", true);
  demo.host.Set("/accounts/0/password", "{hostname}ü~");
  demo.Type("{hostname}ü~\t");
  EXPECT_EQ(shown(demo.Look()), "1:13") << "every byte counts";
}

TEST(Password, AChangeIsMadeToLastWhateverTheToolsCameTo) {
  const char *any = "long-enough", *backup = "/sbin/backup.sh", *agent = "/bin/hmx-cmd";
  const Lines end = told("root"), done = Lines{refreshed("root")} + end;
  const Lines asKiva = {
      refreshed("root"),
      "log.info\tUnable to execute command hmx-cmd internalsvc/refresh using user root. Using user "
      "kiva",
      refreshed("kiva")};
  const Json refuses = {{"status", 255}};
  const Json noStore = {{"features", {{"UserAccountsInConfigStore", false}}}};
  const std::tuple<Json, std::string, std::string, Lines> cases[] = {
      {rehearsed({{backup, refuses}}), any, "", kHead + done},
      {rehearsed({{backup, kDies}}), any, "", kHead + kKilled + done},
      {rehearsed({{agent, refuses}}), any, "", kHead + asKiva + end},
      {{{"minimumPasswordLength", 4}}, "demo", "same as old", kHead + done},
      {noStore, any, "", Lines{kBackup} + done},
      {failing("StoreUserAccountsToCs", "full"), any, "Error while",
       Lines{kNotStored, kBackup} + done},
      {failing("FeatureList", "full"), any, "Error while", Lines{kNotStored, kBackup} + done}};
  for (const auto& [changes, secret, message, lines] : cases) {
    SCOPED_TRACE(changes);
    Demo demo(changes, kQuickEscape);
    openPassword(demo);
    // In one go: what was typed ahead counts up to the Enter; the Escape behind it would log out.
    demo.Type("demo\t" + secret + "\t" + secret + "\n\033");
    if (!message.empty()) demo.Do({"wait:" + message, "Enter"});
    EXPECT_TRUE(demo.WaitForGone("Password:").Shows("<Esc> Log Out")) << demo.Look().Dump();
    EXPECT_EQ(demo.NewLines(), lines);
    demo.Do({"Esc", "F2", "Enter", "type:" + secret, "Enter", "wait:System Customization"});
  }
}

TEST(Password, TheMenuShowsThatAnEmptyOneIsSetNow) {
  Demo demo;
  demo.Do({"F2", "type:guest\n", "Enter", "wait:Not set", "wait:Change default password to prevent",
           "Enter", "type:\tlong-enough\tlong-enough\n", "gone:Old Password:", "wait:  Set  "});
}

TEST(Password, AnExpiredOneIsChangedOnTheWayIn) {
  // The host lies under a name that PAM's own syntax would take apart.
  Demo demo({}, {.script = R"(ln -s . "$2/a [b] c"; exec "$0" --host "$2/a [b] c")"});
  demo.Do({"F2", "type:expired\nexpired\n", "wait:will be prompted", "Enter", "type:expired\t"});
  demo.NewLines();
  demo.Do({"type:long-enough\tlong-enough\n", "wait:Login Name:          [ expired "});
  EXPECT_FALSE(demo.Look().Shows("*")) << "the new one is to be typed";
  EXPECT_EQ(demo.NewLines(), kHead + refreshed("expired") + told("expired"));
  demo.Do({"type:long-enough\n", "wait:System Customization"});
}

TEST(Password, NoCoreFileWhileOneIsHeld) {
  Demo demo({}, {.environment = kQuickEscape.environment, .script = R"(ulimit -S -c $(ulimit -H -c)
                            export ASAN_OPTIONS="$ASAN_OPTIONS:disable_coredump=0"; exec "$0" "$@")"});
  const auto coreLimit = [&] {
    rlimit limit{};
    EXPECT_EQ(prlimit(demo.Pid(), RLIMIT_CORE, nullptr, &limit), 0);
    return limit.rlim_cur;
  };
  const rlim_t before = coreLimit();
  if (before == 0)
    GTEST_SKIP() << "the hard limit of this machine is 0: there is nothing to forbid";
  for (const std::string step : {"F2", "type:\tx", "Backspace", "type:x", "Esc", "F2", "type:\td",
                                 "type:emo\n", "Enter", "type:demo\tlong-enough\t", "Esc"}) {
    demo.Do({step});
    const bool held = step.starts_with("type:") && !step.ends_with("\n");
    EXPECT_EQ(coreLimit(), held ? 0 : before) << step;
  }
}

TEST(Lockdown, AsksTheHostAndTellsIt) {
  const std::string hmx = "run\t/bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_",
                    failed = "log.err\tEnabling lockdown mode failed with error: ",
                    unknown = "log.err\thmx-cmd invocation failure: Success";
  const Lines enter = {hmx + "mode_enter"},
              ask = {"log.info\thmx-cmd invocation: get hmxsvc/auth/lockdown_is_enabled",
                     hmx + "is_enabled"},
              enabled = enter + "log.info\tLockdown mode enabled" + ask,
              disabled = Lines{hmx + "mode_exit", "log.info\tLockdown mode disabled"} + ask,
              refused = enter + (failed + "no agent") + ask + unknown,
              died = enter + kKilled + failed + ask + kKilled + unknown;
  const Json noAgent = {{"status", 255}, {"stderr", "no agent"}}, fine = {},
             slow = {{"status", 0}, {"seconds", 1}};
  const std::tuple<const char*, std::string, const char*, Lines, Json> steps[] = {
      {" \033", "[ ]", "Disabled", {}, fine},
      {"  \n\033", "[ ]", "Disabled", ask, fine},
      {"\033OB \n\033", "[ ]", "Enabled", enabled, fine},
      {"\n", "[X]", "Enabled", ask, fine},
      {" \n", "[X]", "Disabled", disabled, fine},
      {" \n", "[ ]", "Disabled", refused, noAgent},
      {" \n", "[ ]", "Disabled", died, kDies},
      {" \n\n\033", "[ ]", "Disabled", enabled, slow}};
  Demo demo({}, kQuickEscape);
  openMenu(demo, 1);
  for (const auto& [keys, box, state, lines, agent] : steps) {
    SCOPED_TRACE(keys + agent.dump());
    demo.host.Set("/tools", agent.is_null() ? Json::object() : Json{{"/bin/hmx-cmd", agent}});
    demo.Do({"Enter", "wait:" + box + " Enable lockdown mode"});
    demo.NewLines();
    demo.Type(keys);
    const Screen menu = demo.WaitForGone("Enable lockdown mode");
    EXPECT_EQ(missingFrom(menu, {state, "<Esc> Log Out"}), Lines{}) << menu.Dump();
    EXPECT_EQ(demo.NewLines(), lines);
  }
}

}  // namespace
