// SPDX-License-Identifier: MIT
// An operator who presses anything at all: nothing may crash, hang or end with another status than
// 0. KIVA_WALK_SEED repeats a walk (as far as time allows), KIVA_WALK_KEYS makes it longer.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>

#include "harness/demo.h"
#include "harness/readiness.h"

using namespace Harness;

namespace {

constexpr unsigned long kKeys = 11000;  // of each size
constexpr Size kSizes[] = {{24, 80}, {25, 80}, {43, 132}, {5, 20}, {100, 300}};

constexpr const char* kNames[] = {"Up",     "Down",      "Down",   "Enter",    "Enter", "Esc",
                                  "Tab",    "F1",        "F2",     "F3",       "F4",    "F11",
                                  "F12",    "Left",      "Right",  "Home",     "End",   "Insert",
                                  "Delete", "Backspace", "PageUp", "PageDown", "Down",  "Up"};

unsigned long numberFrom(const char* variable, unsigned long otherwise) {
  const char* text = std::getenv(variable);
  return text ? std::strtoul(text, nullptr, 10) : otherwise;
}

class Walk {
 public:
  Walk(unsigned long seed, Size size, const std::filesystem::path& reports)
      : random_(seed), size_(size), reports_("log_path=" + (reports / "report").string()) {
    Restart();
  }

  void Go(unsigned long keys) {
    while (!testing::Test::HasFatalFailure() && (sent_ < keys || !HasEnded())) {
      if (HasEnded()) Restart();
      sent_ < keys ? Step() : terminal_->Signal(SIGTERM);
      Settle();
      if (HasEnded()) {
        ASSERT_EQ(terminal_->WaitForExit(), 0) << "after " << testing::PrintToString(recent_);
      }
    }
  }

  const DemoHost& Host() const { return host_; }

 private:
  template <std::size_t N, typename Value>
  Value OneOf(const Value (&values)[N]) {
    return values[Below(N)];
  }
  int Below(std::size_t end) { return static_cast<int>(random_() % end); }
  bool HasEnded() const { return kill(terminal_->Pid(), 0) != 0; }

  void Restart() {
    Launch launch = host_.Demo({"--clock-speed", OneOf({"1", "1", "100", "5000"})});
    launch.term = OneOf({"xterm-256color", "xterm-256color", "xterm", "vt102"});
    launch.environment = {{"ESCDELAY", "10"}, {"LESSSECURE", "1"}};
    for (const char* sanitizer : {"ASAN_OPTIONS", "UBSAN_OPTIONS"})
      launch.environment[sanitizer] = reports_;
    terminal_.reset();
    terminal_ = std::make_unique<Terminal>(launch, size_);
    recent_.clear();
    Settle();
  }

  void Step() {
    const int kind = Below(100);
    if (kind >= 24 || kind < 1) return SendKeys(kind < 1 ? 300 : 1 + Below(8));
    if (kind < 20) return LogIn();
    if (kind < 23) return ChangeHost();
    terminal_->Signal(OneOf({SIGUSR1, SIGUSR1, SIGUSR2, SIGINT, SIGWINCH}));
  }

  void SendKeys(int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i) bytes += SomeKey();
    Send(bytes, count);
  }

  std::string SomeKey() {
    if (Below(10) < 7)
      return keyBytes(OneOf(kNames),
                      OneOf({KeyFamily::kXterm, KeyFamily::kVt220, KeyFamily::kLinuxConsole}));
    constexpr char kStopOutput = 'S' & 0x1f;  // the terminal itself would stand still
    const char byte = static_cast<char>(Below(10) > 0 ? ' ' + Below(95) : Below(256));
    return std::string(1, byte == kStopOutput ? ' ' : byte);
  }

  void LogIn() {
    Send(keyBytes(OneOf({"F2", "F2", "F2", "F12"})), 1);
    Send(std::string("\t") + OneOf({"demo", "demo", "4711", "wrong"}) + "\r", 6);
    const int entry = Below(14);
    Send(repeated(keyBytes("Down"), entry) + static_cast<char>('0' + Below(10)), entry + 1);
  }

  void ChangeHost() {
    const Json token = Below(2) ? Json{{"label", "Card"}, {"userId", "carla"}} : Json();
    host_.Set("/smartCardSlots/0/token", token);
    host_.Set("/lockdown/enabled", Below(2) == 0);
    host_.Set("/bootOption", Below(2));
    host_.Set("/welcomeMessage", Below(3) ? "" : "{align:right}{ip}\n{bgcolor:red}{hostname}");
    terminal_->Signal(SIGUSR1);
  }

  void Send(const std::string& bytes, int keys) {
    Settle();
    if (HasEnded()) return;
    terminal_->Send(bytes);
    sent_ += static_cast<unsigned long>(keys);
    recent_ += bytes;
  }

  /// The pager can be told to wait for nothing but an interrupt.
  void Settle() {
    terminal_->SetDeadline(std::chrono::seconds(1));
    for (int attempt = 0; attempt < 60; ++attempt) {
      try {
        return terminal_->Settle();
      } catch (const WaitFailed&) {
        if (foregroundOf(terminal_->Pid()) != terminal_->Pid()) terminal_->Send("\003q");
      }
    }
    FAIL() << "it hangs after " << testing::PrintToString(recent_) << "\n"
           << terminal_->Look().Dump();
  }

  std::mt19937_64 random_;
  const Size size_;
  const std::string reports_;
  DemoHost host_;
  std::unique_ptr<Terminal> terminal_;
  unsigned long sent_ = 0;
  std::string recent_;
};

class RandomWalk : public testing::TestWithParam<Size> {};

TEST_P(RandomWalk, FindsNothing) {
  const unsigned long seed = numberFrom("KIVA_WALK_SEED", std::random_device()());
  std::cout << "KIVA_WALK_SEED=" << seed << std::endl;
  const TemporaryFolder reports;
  Walk walk(seed, GetParam(), reports.Path());
  const unsigned long keys = numberFrom("KIVA_WALK_KEYS", kKeys);
  walk.Go(keys);
  for (const auto& report : std::filesystem::directory_iterator(reports.Path()))
    ADD_FAILURE() << std::ifstream(report.path()).rdbuf();
  EXPECT_GT(walk.Host().Journal("log.auth.emerg").size(), keys / 3000)
      << "it must get further than the door";
}

INSTANTIATE_TEST_SUITE_P(Sizes, RandomWalk, testing::ValuesIn(kSizes));

}  // namespace
