// SPDX-License-Identifier: MIT
// What time and signals do to the screens, with a clock that runs faster than the world's.
#include <gtest/gtest.h>

#include <csignal>

#include "harness/demo.h"

using namespace Harness;

namespace {

using Clock = std::chrono::steady_clock;

/// A minute lasts three seconds: long enough for a test's keys, short enough to wait for.
constexpr int kSpeed = 20;
constexpr std::chrono::milliseconds kMinute{60000 / kSpeed};
/// A minute lasts less than a millisecond: every screen is dimmed as soon as it waits.
constexpr int kFlying = 100000;

Setup at(int speed, const char* term = "xterm-256color") {
  return {.term = term,
          .arguments = {"--clock-speed", std::to_string(speed)},
          .environment = {{"ESCDELAY", "25"}}};
}

Json timeOut(int seconds) {
  return {{"options", {{"/UserVars/KivaTimeOut", seconds}}}};
}

void insertCard(DemoHost& host) {
  host.Set("/smartCardSlots/0/token", {{"label", "Card"}, {"userId", "carla"}});
}

void takeCardOut(DemoHost& host) {
  host.Set("/smartCardSlots/0/token", nullptr);
}

bool isDim(const Screen& screen) {
  constexpr Colours kDarkGreyOnBlack{6, 0};
  for (int row = 0; row < screen.GetSize().rows; ++row)
    for (int column = 0; column < screen.GetSize().columns; ++column)
      if (screen.ColoursAt(row, column) != kDarkGreyOnBlack) return false;
  return !screen.cursorVisible;
}

Screen waitUntilDim(Console& console) {
  return console.WaitUntil(isDim, "the screen to be dark grey on black, without a cursor");
}

void openMessage(Console& console) {
  openLogin(console);
  console.Do({"Enter", "Enter", "wait:Authentication failed"});
}

struct Place {
  const char* name;
  void (*reach)(Console&);
};
constexpr Place kPlaces[] = {{"welcome", [](Console& console) { console.WaitFor(kWelcome); }},
                             {"login", openLogin},
                             {"message", openMessage},
                             {"menu", [](Console& console) { logIn(console); }}};

TEST(Time, DimsAfterAMinuteAndWakesAsItWas) {
  for (const auto& [name, reach] : kPlaces) {
    SCOPED_TRACE(name);
    Demo demo({}, at(kSpeed));
    reach(demo);
    demo.Press("PageUp");  // says nothing to these screens; the minute begins
    const auto start = Clock::now();
    const Screen before = demo.Look();
    ASSERT_FALSE(isDim(before));
    const Screen dimmed = waitUntilDim(demo);
    EXPECT_GE(Clock::now() - start, kMinute * 9 / 10);
    EXPECT_EQ(dimmed.Text(), before.Text()) << "lines stay lines";
    demo.Press("PageUp");
    EXPECT_EQ(demo.Look(), before);
  }
}

TEST(Time, TheKeyThatWakesAlsoActs) {
  Demo demo(timeOut(0), at(kSpeed));
  waitUntilDim(demo);
  demo.Press("F2");
  demo.WaitFor(kLogin);
  waitUntilDim(demo);
  demo.Type("x");
  EXPECT_TRUE(demo.Look().Shows("[ x ")) << demo.Look().Dump();
  EXPECT_FALSE(isDim(demo.Look()));
  EXPECT_TRUE(demo.Look().cursorVisible);
}

TEST(Time, WithoutColoursItDimsToStandout) {
  Demo demo({}, at(kSpeed, "vt102"));
  const Screen before = demo.Look();
  demo.WaitUntil([](const Screen& screen) { return screen.At(22, 1).reverse; }, "standout");
  demo.Press("PageUp");
  EXPECT_EQ(demo.Look(), before);
}

TEST(Time, AnIdleSessionIsLoggedOut) {
  for (const int seconds : {30, 60, 90}) {
    SCOPED_TRACE(seconds);
    Demo demo(timeOut(0), at(kSpeed));
    const Screen welcome = demo.Look();
    demo.host.Change(timeOut(seconds));  // counts from the next login
    logIn(demo);
    demo.Press("Down");
    const auto start = Clock::now();
    const auto linesBefore = static_cast<std::ptrdiff_t>(demo.host.Journal().size());
    demo.WaitFor(kWelcome);
    EXPECT_GE(Clock::now() - start, kMinute * std::max(seconds, 60) / 60 * 9 / 10);
    EXPECT_EQ(demo.Look(), welcome);
    const Lines journal = demo.host.Journal();
    EXPECT_EQ(Lines(journal.begin() + linesBefore, journal.end()),
              (Lines{"log.info\tUser root logged out due to time out",
                     "audit\tlogin.disconnect root 1 reason=Time out"}));
    logIn(demo);
  }
}

TEST(Time, ADialogWithoutSessionTimesOutSilently) {
  for (const auto& keys :
       {Lines{"F2"}, {"F12"}, {"F2", "Enter", "Enter", "wait:Authentication f"}}) {
    Demo demo(timeOut(30), at(kSpeed));
    const Screen welcome = demo.Look();
    demo.Do(keys);
    demo.WaitFor(kLogin);
    const Lines journal = demo.host.Journal();
    demo.WaitForGone(kLogin);
    EXPECT_EQ(demo.Look(), welcome) << "out of both at once";
    EXPECT_EQ(demo.host.Journal(), journal);
  }
}

TEST(Time, OnlyTheTimeOutLeadsOutOfAHostThatDoesNotGoDown) {
  Json changes = timeOut(30);
  changes["tools"]["/sbin/poweroff"]["status"] = 0;
  Demo demo(changes, at(kSpeed));
  const Screen welcome = demo.Look();
  demo.Do({"F12", "Enter", "type:demo", "Enter", "wait:Forcefully", "F2", "wait:in progress"});
  const Lines journal = demo.host.Journal();
  demo.WaitForGone("in progress");
  EXPECT_EQ(demo.Look(), welcome) << "out of both dialogs at once";
  EXPECT_EQ(demo.host.Journal(), journal) << "there was no session to end";
}

TEST(Time, ARestoredHostWaitsForItsRestartAsLongAsItTakes) {
  Demo demo(timeOut(30), at(kSpeed));
  logIn(demo);
  for (int i = 0; i < 12; ++i) demo.Send("\033[B");
  demo.Do({"Enter", "wait:Configuration now?", "F11", "wait:Default settings are restored."});
  EXPECT_TRUE(waitUntilDim(demo).Shows("Default settings")) << "the time-out would come first";
}

TEST(Time, SettingsThatNeverTimeOut) {
  for (const int seconds : {0, -1}) {
    SCOPED_TRACE(seconds);
    Demo demo(timeOut(seconds), at(kFlying));
    demo.host.Set("/accounts/0/password", "d");
    // Dimming and waking both discard what was typed before, so every key waits for its dim screen.
    for (const char* key : {"F2", "Enter", "d", "Enter"}) {
      waitUntilDim(demo);
      key[1] == '\0' ? demo.Type(key) : demo.Press(key);
    }
    demo.WaitFor(kMenu);
    EXPECT_TRUE(demo.StaysIdle()) << "for some five hours of this clock";
    EXPECT_TRUE(isDim(demo.Look()));
    EXPECT_TRUE(demo.Look().Shows(kMenu));
    EXPECT_TRUE(demo.host.Journal("audit").size() == 1);
  }
}

TEST(Time, TheWelcomeScreenNeverTimesOut) {
  Demo demo(timeOut(30), at(kFlying));
  EXPECT_TRUE(demo.StaysIdle());
  EXPECT_TRUE(demo.Look().Shows(kWelcome));
  EXPECT_EQ(demo.host.Journal(), Lines{"log.info\tStarting KIVA"});
}

TEST(Signals, EndWhateverIsOnTheScreen) {
  void (*const ends[])(Demo&) = {
      [](Demo& demo) { demo.Signal(SIGTERM); }, [](Demo& demo) { demo.Signal(SIGINT); },
      [](Demo& demo) { demo.Signal(SIGQUIT); }, [](Demo& demo) { demo.HangUp(); },
      [](Demo& demo) {
        demo.Resize({43, 132});
      }};
  for (const auto& end : ends)
    for (const auto& [name, reach] : kPlaces) {
      SCOPED_TRACE(name + std::to_string(&end - ends));
      Demo demo({}, at(1));
      reach(demo);
      end(demo);
      EXPECT_EQ(demo.WaitForExit(), 0);
      EXPECT_EQ(demo.HasLine("log.info", "Resized window to 132x43"), &end == &ends[4]);
    }
  Demo demo;
  demo.Send("\033R");
  EXPECT_EQ(demo.WaitForExit(), 0);
  EXPECT_EQ(demo.host.Journal().back(), "log.info\tResized window to 80x24");
}

TEST(Signals, AStopEndsEveryDialogAndTellsTheHostNothing) {
  const Json full = {{"faults", {{"StoreUserAccountsToCs", "full"}, {"SetOption", "full"}}}};
  constexpr int kCustomization = -1;
  const std::pair<int, Lines> places[] = {
      {kCustomization, {"Enter", "wait:Old Password:"}},
      {kCustomization, {"Enter", "type:demo\tdemo\tdemo\n", "wait:Are you sure?"}},
      {kCustomization, {"Enter", "type:x\t", "wait:is incorrect"}},
      {kCustomization, {"Enter", "type:demo\tlong-enough\tlong-enough\n", "wait:Error while"}},
      {kCustomization, {"Down", "Enter", "wait:Enable lockdown mode"}},
      {kCustomization, {"Esc", "F2", "type:expired\nexpired\n", "wait:has expired", "Enter"}},
      {0, {}},
      {2, {"Enter", "type:1441"}},
      {2, {"Enter", "type:1441", "Enter", "wait:Invalid timeout value"}},
      {3, {"Enter", "type:5"}},
      {3, {"Enter", "type:5", "Enter", "wait:Operation Failed"}},
      {4, {"Enter", "type: "}},
      {4, {"Enter", "F11", "wait:<Enter> OK"}}};
  for (const auto& [row, keys] : places) {
    SCOPED_TRACE(testing::PrintToString(keys));
    Demo demo(full, at(1));
    row == kCustomization ? logIn(demo) : openTroubleshooting(demo, row);
    demo.Do(keys);
    demo.NewLines();
    EXPECT_EQ(demo.Stop(), 0);
    EXPECT_EQ(demo.NewLines(), Lines{});
  }
}

TEST(Signals, AStopRequestWaitsForTheSessionToEnd) {
  for (const auto& [name, reach] : kPlaces) {
    SCOPED_TRACE(name);
    Demo demo({}, at(1));
    reach(demo);
    demo.Signal(SIGUSR2);
    if (std::string(name) == "menu") {
      EXPECT_TRUE(demo.StaysIdle());
      demo.Press("Down");
      EXPECT_TRUE(demo.Look().Shows("lockdown mode prevents"));
      demo.Send("\033");
    }
    EXPECT_EQ(demo.WaitForExit(), 0);
    EXPECT_EQ(demo.HasLine("log.info", "User root logged out"), std::string(name) == "menu");
  }
  Demo demo(timeOut(30), at(kSpeed));
  logIn(demo);
  demo.Signal(SIGUSR2);
  EXPECT_EQ(demo.WaitForExit(), 0);
  EXPECT_TRUE(demo.HasLine("log.info", "User root logged out due to time out"));
}

TEST(Signals, ASmartCardOpensAndClosesItsOwnSession) {
  Demo demo({}, at(1));
  demo.Signal(SIGUSR1);
  EXPECT_TRUE(demo.StaysIdle());
  insertCard(demo.host);
  demo.Signal(SIGUSR1);
  demo.WaitForLine("log.info", "Found smart card with user id 'carla'");
  openLogin(demo);
  EXPECT_TRUE(demo.Look().Shows("PIN:"));
  EXPECT_TRUE(demo.Look().Shows("[ carla ")) << demo.Look().Dump();
  demo.Do({"Enter", "type:4711", "Enter"});
  demo.WaitFor(kMenu);
  demo.Signal(SIGUSR1);
  EXPECT_TRUE(demo.StaysIdle()) << "the card is still there";
  takeCardOut(demo.host);
  demo.Signal(SIGUSR1);
  EXPECT_EQ(demo.WaitForExit(), 0);
  EXPECT_EQ(demo.host.Journal().back(), "log.info\tLogging out user id 'carla'");
}

TEST(Signals, ACardThatIsGoneLeavesASessionByPasswordAlone) {
  Demo demo({}, at(1));
  insertCard(demo.host);
  logIn(demo);
  takeCardOut(demo.host);
  demo.Signal(SIGUSR1);
  demo.Press("Down");
  EXPECT_TRUE(demo.Look().Shows(kMenu));
  demo.Press("Esc");
  demo.host.Change(Json{{"faults", {{"GetAllSlots", "no reader"}}}});
  demo.Signal(SIGUSR1);
  demo.WaitForLine("log.err", "Error trying to lookup smart card tokens.");
}

}  // namespace
