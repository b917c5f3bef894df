// SPDX-License-Identifier: MIT
// What time and signals do to the screens, with a clock that runs faster than the world's.
#include <gtest/gtest.h>

#include <csignal>

#include "harness/terminal.h"
#include "tests/screens/demo.h"
#include "tests/screens/steps.h"

namespace Harness {
namespace {

using Json = nlohmann::json;
using Clock = std::chrono::steady_clock;
using Lines = std::vector<std::string>;

/// A minute lasts three seconds: long enough for a test's keys, short enough to wait for.
constexpr int kSpeed = 20;
constexpr std::chrono::milliseconds kMinute{60000 / kSpeed};
/// A minute lasts less than a millisecond: every screen is dimmed as soon as it waits.
constexpr int kFlying = 100000;

Launch at(const DemoHost& host, int speed) {
  Launch launch = host.Demo({"--clock-speed", std::to_string(speed)});
  launch.environment = {{"ESCDELAY", "25"}};
  return launch;
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
    const DemoHost host;
    Terminal terminal(at(host, kSpeed));
    reach(terminal);
    terminal.Press("PageUp");  // says nothing to these screens; the minute begins
    const auto start = Clock::now();
    const Screen before = seen(terminal);
    ASSERT_FALSE(isDim(before));
    const Screen dimmed = waitUntilDim(terminal);
    EXPECT_GE(Clock::now() - start, kMinute * 9 / 10);
    EXPECT_EQ(dimmed.Text(), before.Text()) << "lines stay lines";
    terminal.Press("PageUp");
    EXPECT_EQ(seen(terminal), before);
  }
}

TEST(Time, TheKeyThatWakesAlsoActs) {
  const DemoHost host(timeOut(0));
  Terminal terminal(at(host, kSpeed));
  terminal.WaitFor(kWelcome);
  waitUntilDim(terminal);
  terminal.Press("F2");
  terminal.WaitFor(kLogin);
  waitUntilDim(terminal);
  terminal.Type("x");
  EXPECT_TRUE(terminal.Look().Shows("[ x ")) << terminal.Look().Dump();
  EXPECT_FALSE(isDim(terminal.Look()));
  EXPECT_TRUE(terminal.Look().cursorVisible);
}

TEST(Time, WithoutColoursItDimsToStandout) {
  const DemoHost host;
  Launch launch = at(host, kSpeed);
  launch.term = "vt102";
  Terminal terminal(launch);
  terminal.WaitFor(kWelcome);
  const Screen before = seen(terminal);
  terminal.WaitUntil([](const Screen& screen) { return screen.At(22, 1).reverse; }, "standout");
  terminal.Press("PageUp");
  EXPECT_EQ(seen(terminal), before);
}

TEST(Time, AnIdleSessionIsLoggedOut) {
  for (const int seconds : {30, 60, 90}) {
    SCOPED_TRACE(seconds);
    DemoHost host(timeOut(0));
    Terminal terminal(at(host, kSpeed));
    terminal.WaitFor(kWelcome);
    const Screen welcome = seen(terminal);
    host.Change(timeOut(seconds));  // counts from the next login
    logIn(terminal);
    terminal.Press("Down");
    const auto start = Clock::now();
    const auto linesBefore = static_cast<std::ptrdiff_t>(host.Journal().size());
    terminal.WaitFor(kWelcome);
    EXPECT_GE(Clock::now() - start, kMinute * std::max(seconds, 60) / 60 * 9 / 10);
    EXPECT_EQ(seen(terminal), welcome);
    const Lines journal = host.Journal();
    EXPECT_EQ(Lines(journal.begin() + linesBefore, journal.end()),
              (Lines{"log.info\tUser root logged out due to time out",
                     "audit\tlogin.disconnect root 1 reason=Time out"}));
    logIn(terminal);
  }
}

TEST(Time, ADialogWithoutSessionTimesOutSilently) {
  for (const auto& keys :
       {Lines{"F2"}, {"F12"}, {"F2", "Enter", "Enter", "wait:Authentication f"}}) {
    const DemoHost host(timeOut(30));
    Terminal terminal(at(host, kSpeed));
    terminal.WaitFor(kWelcome);
    const Screen welcome = seen(terminal);
    terminal.Do(keys);
    terminal.WaitFor(kLogin);
    const Lines journal = host.Journal();
    terminal.WaitForGone(kLogin);
    EXPECT_EQ(seen(terminal), welcome) << "out of both at once";
    EXPECT_EQ(host.Journal(), journal);
  }
}

TEST(Time, SettingsThatNeverTimeOut) {
  for (const int seconds : {0, -1}) {
    SCOPED_TRACE(seconds);
    DemoHost host(timeOut(seconds));
    host.Set("/accounts/0/password", "d");
    Terminal terminal(at(host, kFlying));
    // Dimming and waking both discard what was typed before, so every key waits for its dim screen.
    for (const char* key : {"F2", "Enter", "d", "Enter"}) {
      waitUntilDim(terminal);
      key[1] == '\0' ? terminal.Type(key) : terminal.Press(key);
    }
    terminal.WaitFor(kMenu);
    EXPECT_TRUE(staysIdle(terminal)) << "for some five hours of this clock";
    EXPECT_TRUE(isDim(terminal.Look()));
    EXPECT_TRUE(terminal.Look().Shows(kMenu));
    EXPECT_TRUE(host.Journal("audit").size() == 1);
  }
}

TEST(Time, TheWelcomeScreenNeverTimesOut) {
  const DemoHost host(timeOut(30));
  Terminal terminal(at(host, kFlying));
  terminal.WaitFor(kWelcome);
  EXPECT_TRUE(staysIdle(terminal));
  EXPECT_TRUE(terminal.Look().Shows(kWelcome));
  EXPECT_EQ(host.Journal(), Lines{"log.info\tStarting KIVA"});
}

TEST(Signals, StopWhateverIsOnTheScreen) {
  for (const int signal : {SIGTERM, SIGINT, SIGQUIT})
    for (const auto& [name, reach] : kPlaces) {
      SCOPED_TRACE(name);
      const DemoHost host;
      Terminal terminal(at(host, 1));
      reach(terminal);
      terminal.Signal(signal);
      EXPECT_EQ(terminal.WaitForExit(), 0) << signal;
    }
}

TEST(Signals, AStopRequestWaitsForTheSessionToEnd) {
  for (const auto& [name, reach] : kPlaces) {
    SCOPED_TRACE(name);
    const DemoHost host;
    Terminal terminal(at(host, 1));
    reach(terminal);
    terminal.Signal(SIGUSR2);
    if (std::string(name) == "menu") {
      EXPECT_TRUE(staysIdle(terminal));
      terminal.Press("Down");
      EXPECT_TRUE(terminal.Look().Shows("lockdown mode prevents"));
      terminal.Send("\033");
    }
    EXPECT_EQ(terminal.WaitForExit(), 0);
    EXPECT_EQ(hasLine(host, "log.info", "User root logged out"), std::string(name) == "menu");
  }
  DemoHost host(timeOut(30));
  Terminal terminal(at(host, kSpeed));
  logIn(terminal);
  terminal.Signal(SIGUSR2);
  EXPECT_EQ(terminal.WaitForExit(), 0);
  EXPECT_TRUE(hasLine(host, "log.info", "User root logged out due to time out"));
}

TEST(Signals, AnotherSizeEndsTheProgram) {
  for (const auto& [name, reach] : kPlaces) {
    SCOPED_TRACE(name);
    const DemoHost host;
    Terminal terminal(at(host, 1));
    reach(terminal);
    terminal.Resize({43, 132});
    EXPECT_EQ(terminal.WaitForExit(), 0);
    EXPECT_EQ(host.Journal().back(), "log.info\tResized window to 132x43");
  }
  Demo demo;
  demo.terminal.Send("\033R");
  EXPECT_EQ(demo.terminal.WaitForExit(), 0);
  EXPECT_EQ(demo.host.Journal().back(), "log.info\tResized window to 80x24");
}

TEST(Signals, ASmartCardOpensAndClosesItsOwnSession) {
  DemoHost host;
  Terminal terminal(at(host, 1));
  terminal.WaitFor(kWelcome);
  terminal.Signal(SIGUSR1);
  EXPECT_TRUE(staysIdle(terminal));
  insertCard(host);
  terminal.Signal(SIGUSR1);
  waitForLine(terminal, host, "log.info", "Found smart card with user id 'carla'");
  openLogin(terminal);
  EXPECT_TRUE(terminal.Look().Shows("PIN:"));
  EXPECT_TRUE(terminal.Look().Shows("[ carla ")) << terminal.Look().Dump();
  terminal.Do({"Enter", "type:4711", "Enter"});
  terminal.WaitFor(kMenu);
  terminal.Signal(SIGUSR1);
  EXPECT_TRUE(staysIdle(terminal)) << "the card is still there";
  takeCardOut(host);
  terminal.Signal(SIGUSR1);
  EXPECT_EQ(terminal.WaitForExit(), 0);
  EXPECT_EQ(host.Journal().back(), "log.info\tLogging out user id 'carla'");
}

TEST(Signals, ACardThatIsGoneLeavesASessionByPasswordAlone) {
  DemoHost host;
  insertCard(host);
  Terminal terminal(at(host, 1));
  logIn(terminal);
  takeCardOut(host);
  terminal.Signal(SIGUSR1);
  terminal.Press("Down");
  EXPECT_TRUE(terminal.Look().Shows(kMenu));
  terminal.Press("Esc");
  host.Change(Json{{"faults", {{"GetAllSlots", "no reader"}}}});
  terminal.Signal(SIGUSR1);
  waitForLine(terminal, host, "log.err", "Error trying to lookup smart card tokens.");
}

}  // namespace
}  // namespace Harness
