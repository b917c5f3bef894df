// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <fstream>
#include <string>
#include <thread>

#include "harness/console.h"
#include "harness/demo_host.h"
#include "harness/readiness.h"

// Steps that tests of the running program share.
namespace Harness {

/// A text that only this screen shows.
inline constexpr const char* kWelcome = "Shut Down/Restart";
inline constexpr const char* kLogin = "Authentication Required";
inline constexpr const char* kMenu = "System Customization";

inline void openLogin(Console& console) {
  console.WaitFor(kWelcome);
  console.Press("F2");
  console.WaitFor(kLogin);
}

/// From the welcome screen to the menu, as the user that the dialog offers.
inline void logIn(Console& console, const std::string& password = "demo") {
  openLogin(console);
  console.Press("Enter");
  console.Type(password);
  console.Press("Enter");
  console.WaitFor(kMenu);
}

/// What an operator sees; where a hidden cursor stands does not count.
inline Screen seen(Console& console) {
  Screen screen = console.Look();
  if (!screen.cursorVisible) screen.cursor = {};
  return screen;
}

inline bool hasLine(const DemoHost& host, std::string_view kind, const std::string& line) {
  const auto lines = host.Journal(kind);
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

inline void waitForLine(Console& console, const DemoHost& host, std::string_view kind,
                        const std::string& line) {
  console.WaitUntil([&](const Screen&) { return hasLine(host, kind, line); }, line);
}

/// How often the program slept and how long it worked so far, in clock ticks.
inline std::pair<long, long> workOf(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
  std::string word;
  constexpr int kFieldsToUserTime = 13;
  for (int i = 0; i < kFieldsToUserTime; ++i) file >> word;
  long user = 0;
  long system = 0;
  file >> user >> system;
  return {sleepsOf(pid), user + system};
}

/// Whether the program comes to do nothing at all for a while, as one in a busy loop never does.
inline bool staysIdle(Console& console) {
  for (int attempt = 0; attempt < 20; ++attempt) {
    console.Settle();
    const auto before = workOf(console.Pid());
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    if (workOf(console.Pid()) == before) return before.first >= 0;  // not one that has ended
  }
  return false;
}

}  // namespace Harness
