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
          .environment = kQuickEscape.environment};
}

Json timeOut(int seconds) {
  return {{"options", {{"/UserVars/KivaTimeOut", seconds}}}};
}

bool isDim(const Screen& screen) {
  return isAllIn(screen, {6, 0}) && !screen.cursorVisible;
}

Screen waitUntilDim(Demo& demo) {
  return demo.WaitUntil(isDim, "the screen to be dark grey on black, without a cursor");
}

/// Welcome, login, a message, and the menu.
const Lines kPlaces[] = {{},
                         {"F2", "wait:Authentication Required"},
                         {"F2", "Enter", "Enter", "wait:Authentication failed"},
                         kLogIn};

TEST(Time, DimsAfterAMinuteAndWakesAsItWas) {
  for (const Lines& way : kPlaces) {
    SCOPED_TRACE(testing::PrintToString(way));
    Demo demo({}, at(kSpeed));
    demo.Do(way);
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
    demo.NewLines();
    demo.WaitFor(kWelcome);
    EXPECT_GE(Clock::now() - start, kMinute * std::max(seconds, 60) / 60 * 9 / 10);
    EXPECT_EQ(demo.Look(), welcome);
    EXPECT_EQ(demo.NewLines(), (Lines{"log.info\tUser root logged out due to time out",
                                      "audit\tlogin.disconnect root 1 reason=Time out"}));
    logIn(demo);
  }
}

TEST(Time, ADialogWithoutSessionTimesOutSilently) {
  Json changes = timeOut(30);
  changes["tools"]["/sbin/poweroff"]["status"] = 0;  // a host that does not go down
  const std::pair<Lines, const char*> places[] = {
      {{"F12"}, kLogin},
      {{"F2", "Enter", "Enter", "wait:Authentication f"}, kLogin},
      {{"F12", "Enter", "type:demo", "Enter", "wait:Forcefully", "F2"}, "in progress"}};
  for (const auto& [keys, shown] : places) {
    Demo demo(changes, at(kSpeed));
    const Screen welcome = demo.Look();
    demo.Do(keys + (std::string("wait:") + shown));
    demo.NewLines();
    demo.WaitForGone(shown);
    EXPECT_EQ(demo.Look(), welcome) << "out of both at once";
    EXPECT_EQ(demo.NewLines(), Lines{});
  }
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
    EXPECT_TRUE(isDim(demo.Look()) && demo.Look().Shows(kMenu)) << demo.Look().Dump();
  }
  Demo demo(timeOut(30), at(kFlying));
  EXPECT_TRUE(demo.StaysIdle() && demo.Look().Shows(kWelcome)) << "there is no session to end";
  EXPECT_EQ(demo.host.Journal(), Lines{"log.info\tStarting KIVA"});
}

TEST(Signals, EndWhateverIsOnTheScreenAndTellTheHostNothing) {
  const Json full = {{"faults", {{"StoreUserAccountsToCs", "full"}, {"SetOption", "full"}}}};
  const Lines options = kLogIn + Lines{"choose:Troubleshooting Options"};
  std::vector<Lines> places = {
      kLogIn + parts("Enter;type:demo\tdemo\tdemo\n;wait:Are you sure?"),
      kLogIn + parts("Enter;type:demo\tlong-enough\tlong-enough\n;wait:Error while"),
      parts("F2;type:expired\nexpired\n;wait:has expired;Enter"),
      options + parts("choose:Modify Halo;type:1441;Enter;wait:Invalid timeout value"),
      options + parts("choose:Modify KIVA;type:5;Enter;wait:Operation Failed"),
      options + parts("choose:Restart Management;F11;wait:<Enter> OK")};
  places.insert(places.end(), std::begin(kPlaces), std::end(kPlaces));
  for (const Lines& keys : places)
    for (const int end : {SIGTERM, SIGINT, SIGQUIT, SIGWINCH, kHangUp}) {
      SCOPED_TRACE(testing::PrintToString(keys) + std::to_string(end));
      Demo demo(full, at(1));
      demo.Do(keys);
      demo.NewLines();
      EXPECT_EQ(demo.EndBy(end), 0);
      const Lines resized = {"log.info\tResized window to 132x43"};
      EXPECT_EQ(demo.NewLines(), end == SIGWINCH ? resized : Lines{});
    }
  Demo demo;
  demo.Send("\033R");
  EXPECT_EQ(demo.WaitForExit(), 0);
  EXPECT_EQ(demo.host.Journal().back(), "log.info\tResized window to 80x24");
}

TEST(Signals, AStopRequestWaitsForTheSessionToEnd) {
  for (const Lines& way : kPlaces) {
    SCOPED_TRACE(testing::PrintToString(way));
    const bool session = way == kLogIn;
    Demo demo(timeOut(30), at(kSpeed));
    demo.Do(way);
    demo.Signal(SIGUSR2);
    if (session) demo.Do({"Down", "wait:lockdown mode prevents"});
    EXPECT_EQ(demo.WaitForExit(), 0);
    EXPECT_EQ(demo.HasLine("log.info", "User root logged out due to time out"), session);
  }
}

TEST(Signals, ASmartCardOpensAndClosesItsOwnSession) {
  Demo demo({}, at(1));
  const auto card = [&demo](const Json& token) {
    demo.host.Set("/smartCardSlots/0/token", token);
    demo.Signal(SIGUSR1);
  };
  const Json carla = {{"label", "Card"}, {"userId", "carla"}};
  card(nullptr);
  EXPECT_TRUE(demo.StaysIdle());
  demo.host.Set("/smartCardSlots/0/token", carla);
  logIn(demo);
  card(nullptr);
  demo.Do({"Down", std::string("wait:") + kMenu, "Esc"});  // a session by password
  card(carla);
  demo.WaitForLine("log.info", "Found smart card with user id 'carla'");
  demo.Do({"F2", "wait:PIN:", "wait:[ carla ", "Enter", "type:4711", "Enter"});
  demo.WaitFor(kMenu);
  card(carla);
  EXPECT_TRUE(demo.StaysIdle()) << "the card is still there";
  card(nullptr);
  EXPECT_EQ(demo.WaitForExit(), 0);
  EXPECT_EQ(demo.host.Journal().back(), "log.info\tLogging out user id 'carla'");
}

}  // namespace
