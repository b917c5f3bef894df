// SPDX-License-Identifier: MIT
// The dialogs that change a password and the host's lockdown mode, up to what the host is told.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>

#include "harness/demo.h"

using namespace Harness;

namespace {

const Lines kNotStored = {
    "log.warning\tError while storing user account information to persistent storage. The new "
    "information may not be available after reboot. Error: full"};

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

const Lines kStored = {"hostctl\tStoreUserAccountsToCs"};
const Lines kBackup = {"run\t/sbin/backup.sh backup.sh 0"};
const Lines kDied = {kKilled};

Lines refreshed(const std::string& user) {
  return {"run\t/bin/hmx-cmd hmx-cmd -U " + user + " internalsvc/refresh"};
}

Lines told(const std::string& user) {
  return {"log.info\tLogin password for user " + user + " has changed",
          "log.info\tInitializing evbuser library",
          "event\t@&!*@*@(evb.user.kiva.login.passwd.changed)Login password for user " + user +
              " changed"};
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
  Demo demo({}, kQuickEscape);
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
  demo.host.Set("/accounts/0/permission", false);
  demo.Do({"type:demo\t", "wait:old password you entered is incorrect", "Enter"});
  demo.host.Set("/accounts/0/permission", true);
  demo.host.Set("/accounts/0/password", "{hostname}ü~");
  demo.Type("{hostname}ü~\t");
  EXPECT_EQ(shown(demo.Look()), "1:13") << "every byte counts";
}

TEST(Password, AChangeIsMadeToLastWhateverTheToolsCameTo) {
  const Lines done = refreshed("root") + told("root"), log = {told("root")[0], told("root")[1]};
  const Lines asKiva = {
      "log.info\tUnable to execute command hmx-cmd internalsvc/refresh using user "
      "root. Using user kiva"};
  const Lines noEvent = {"log.err\tUnable to initialize evbuser library from KIVA. Error code: 7"};
  const Json backupFails = {{"/sbin/backup.sh", {{"status", 255}}}};
  const Json backupDies = {{"/sbin/backup.sh", kDies}}, backupGone = {{"/sbin/backup.sh", kGone}};
  const Json agentRefuses = {{"/bin/hmx-cmd", {{"status", 255}}}};
  const Json noStore = {{"features", {{"UserAccountsInConfigStore", false}}}};
  const Json storeFull = {{"faults", {{"StoreUserAccountsToCs", "full"}}}};
  const Json unknown = {{"faults", {{"FeatureList", "full"}}}};
  const struct {
    Json changes;
    const char *secret, *message;
    Lines lines;
  } cases[] = {{rehearsed(backupFails), "long-enough", nullptr, kStored + kBackup + done},
               {rehearsed(backupDies), "long-enough", nullptr, kStored + kBackup + kDied + done},
               {rehearsed(backupGone), "long-enough", nullptr, kStored + kBackup + done},
               {rehearsed(agentRefuses), "long-enough", nullptr,
                kStored + kBackup + refreshed("root") + asKiva + refreshed("kiva") + told("root")},
               {{{"eventLibraryStatus", 7}},
                "long-enough",
                nullptr,
                kStored + kBackup + refreshed("root") + log + noEvent},
               {{{"minimumPasswordLength", 4}}, "demo", "same as old", kStored + kBackup + done},
               {noStore, "new-one", nullptr, kBackup + done},
               {storeFull, "new-one", "Error while", kNotStored + kBackup + done},
               {unknown, "new-one", "Error while", kNotStored + kBackup + done}};
  for (const auto& [changes, secret, message, lines] : cases) {
    SCOPED_TRACE(changes);
    Demo demo(changes, kQuickEscape);
    openPassword(demo);
    // In one go: what was typed ahead counts up to the Enter, but the Escape behind it would log
    // out.
    const std::string word = secret;
    demo.Type("demo\t" + word + "\t" + word + "\n\033");
    if (message) demo.Do({std::string("wait:") + message, "Enter"});
    EXPECT_TRUE(demo.WaitForGone("Password:").Shows("<Esc> Log Out")) << demo.Look().Dump();
    EXPECT_EQ(demo.NewLines(), lines);
    demo.Do({"Esc", "F2", "Enter", "type:" + word, "Enter", "wait:System Customization"});
  }
}

TEST(Password, TheMenuShowsThatAnEmptyOneIsSetNow) {
  Demo demo;
  demo.Do({"F2", "type:guest\n", "Enter", "wait:Not set", "wait:Change default password to prevent",
           "Enter", "type:\tlong-enough\tlong-enough\n", "gone:Old Password:"});
  EXPECT_TRUE(demo.Look().Shows("  Set  ")) << demo.Look().Dump();
}

TEST(Password, AnExpiredOneIsChangedOnTheWayIn) {
  Demo demo;
  demo.Do({"F2", "type:expired\nexpired\n", "wait:will be prompted", "Enter", "type:expired\t"});
  demo.NewLines();
  demo.Do({"type:long-enough\tlong-enough\n", "wait:Login Name:          [ expired "});
  EXPECT_FALSE(demo.Look().Shows("*")) << "the new one is to be typed";
  EXPECT_EQ(demo.NewLines(), kStored + kBackup + refreshed("expired") + told("expired"));
  demo.Do({"type:long-enough\n", "wait:System Customization"});
}

TEST(Password, NoCoreFileWhileOneIsHeld) {
  Demo demo({}, {.environment = kQuickEscape.environment,
                 .script = R"(ulimit -S -c $(ulimit -H -c); exec "$0" "$@")"});
  const auto coreLimit = [&] {
    rlimit limit{};
    EXPECT_EQ(prlimit(demo.Pid(), RLIMIT_CORE, nullptr, &limit), 0);
    return limit.rlim_cur;
  };
  const rlim_t before = coreLimit();
  if (before == 0) GTEST_SKIP() << "the limit of this machine is 0: there is nothing to forbid";
  for (const std::string step : {"F2", "type:\tx", "Backspace", "type:x", "Esc", "F2", "type:\td",
                                 "type:emo\n", "Enter", "type:demo\tlong-enough\t", "Esc"}) {
    demo.Do({step});
    const bool held = step.starts_with("type:") && !step.ends_with("\n");
    EXPECT_EQ(coreLimit(), held ? 0 : before) << step;
  }
}

TEST(Lockdown, AsksTheHostAndTellsIt) {
  const std::string hmx = "run\t/bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_";
  const std::string failed = "log.err\tEnabling lockdown mode failed with error: ";
  const Lines enter = {hmx + "mode_enter"}, leave = {hmx + "mode_exit"};
  const Lines enabled = {"log.info\tLockdown mode enabled"};
  const Lines disabled = {"log.info\tLockdown mode disabled"};
  const Lines ask = {"log.info\thmx-cmd invocation: get hmxsvc/auth/lockdown_is_enabled",
                     hmx + "is_enabled"};
  const Lines unknown = {"log.err\thmx-cmd invocation failure: Success"};
  const Lines refused = enter + Lines{failed + "no agent"} + ask + unknown;
  const Lines refusedSilently = enter + Lines{failed} + ask + unknown;
  const Lines died = enter + kDied + Lines{failed} + ask + kDied + unknown;
  const Json notAsUser = {{"status", 255}};
  const Json noAgent = {{"status", 1}, {"stderr", "no agent"}};
  const Json slow = {{"status", 0}, {"seconds", 1}};
  const struct {
    const char *keys, *box, *state;
    Lines lines;
    Json agent = {};
  } steps[] = {{" \033", "[ ]", "Disabled", {}},
               {"  \n\033", "[ ]", "Disabled", ask},
               {"\033OB \n\033", "[ ]", "Enabled", enter + enabled + ask},
               {"\n", "[X]", "Enabled", ask},
               {" \n", "[X]", "Disabled", leave + disabled + ask},
               {" \n", "[ ]", "Disabled", refused, noAgent},
               {" \n", "[ ]", "Disabled", refusedSilently, notAsUser},
               {" \n", "[ ]", "Disabled", died, kDies},
               {" \n\n\033", "[ ]", "Disabled", enter + enabled + ask, slow}};
  Demo demo({}, kQuickEscape);
  logIn(demo);
  demo.Press("Down");
  for (const auto& [keys, box, state, lines, agent] : steps) {
    SCOPED_TRACE(keys + agent.dump());
    demo.host.Set("/tools", agent.is_null() ? Json::object() : Json{{"/bin/hmx-cmd", agent}});
    demo.Do({"Enter", std::string("wait:") + box + " Enable lockdown mode"});
    demo.NewLines();
    demo.Type(keys);
    const Screen menu = demo.WaitForGone("Enable lockdown mode");
    EXPECT_EQ(missingFrom(menu, {state, "<Esc> Log Out"}), Lines{}) << menu.Dump();
    EXPECT_EQ(demo.NewLines(), lines);
  }
}

}  // namespace
