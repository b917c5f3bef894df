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

constexpr int kKeys = 11000;  // of each size
constexpr int kFlood = 300;
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
      : random_(seed), size_(size), reports_(reports) {
    Restart();
  }

  void Go(int keys) {
    while (sent_ < keys) {
      Step();
      Settle();
      if (kill(terminal_->Pid(), 0) != 0) {
        ASSERT_EQ(terminal_->WaitForExit(), 0) << "after " << testing::PrintToString(recent_);
        Restart();
      }
    }
    terminal_->Signal(SIGTERM);
    ASSERT_EQ(terminal_->WaitForExit(), 0) << "after " << testing::PrintToString(recent_);
  }

  const DemoHost& Host() const { return host_; }

 private:
  int Below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }

  void Restart() {
    const char* speed[] = {"1", "1", "100", "5000"};
    const char* term[] = {"xterm-256color", "xterm-256color", "xterm", "vt102"};
    Launch launch = host_.Demo({"--clock-speed", speed[Below(4)]});
    launch.term = term[Below(4)];
    const std::string path = "log_path=" + (reports_ / "report").string();
    launch.environment = {
        {"ESCDELAY", "10"}, {"LESSSECURE", "1"}, {"ASAN_OPTIONS", path}, {"UBSAN_OPTIONS", path}};
    terminal_.reset();
    terminal_ = std::make_unique<Terminal>(launch, size_);
    recent_.clear();
    Settle();
  }

  void Step() {
    const int kind = Below(100);
    if (kind < 1) {
      SendKeys(kFlood);
    } else if (kind < 20) {
      LogIn();
    } else if (kind < 23) {
      ChangeHost();
    } else if (kind < 24) {
      constexpr int kSignals[] = {SIGUSR1, SIGUSR1, SIGUSR2, SIGINT, SIGWINCH};
      terminal_->Signal(kSignals[Below(5)]);
    } else {
      SendKeys(1 + Below(8));
    }
  }

  void SendKeys(int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i) bytes += SomeKey();
    Send(bytes, count);
  }

  std::string SomeKey() {
    constexpr KeyFamily kFamilies[] = {KeyFamily::kXterm, KeyFamily::kVt220,
                                       KeyFamily::kLinuxConsole};
    const int kind = Below(100);
    if (kind < 70) return keyBytes(kNames[Below(std::size(kNames))], kFamilies[Below(3)]);
    if (kind < 97) return std::string(1, static_cast<char>(' ' + Below(95)));
    constexpr char kStopOutput = 'S' & 0x1f;  // the terminal itself would stand still
    const char byte = static_cast<char>(Below(256));
    return std::string(1, byte == kStopOutput ? ' ' : byte);
  }

  void LogIn() {
    Send(keyBytes(Below(4) == 0 ? "F12" : "F2"), 1);
    Settle();
    const char* secrets[] = {"demo", "demo", "4711", "wrong"};
    Send("\t" + std::string(secrets[Below(4)]) + "\r", 6);
    Settle();
    const int entry = Below(14);
    std::string keys;
    for (int i = 0; i < entry; ++i) keys += keyBytes("Down");
    Send(keys + static_cast<char>('0' + Below(10)), entry + 1);
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
    if (kill(terminal_->Pid(), 0) != 0) return;
    terminal_->Send(bytes);
    sent_ += keys;
    recent_ += bytes;
    constexpr std::size_t kShown = 2000;
    if (recent_.size() > kShown) recent_.erase(0, recent_.size() - kShown);
  }

  /// The pager can be told to wait for nothing but an interrupt.
  void Settle() {
    for (int attempt = 0; attempt < 60; ++attempt) {
      terminal_->SetDeadline(std::chrono::seconds(1));
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
  const std::filesystem::path reports_;
  DemoHost host_;
  std::unique_ptr<Terminal> terminal_;
  int sent_ = 0;
  std::string recent_;
};

class RandomWalk : public testing::TestWithParam<Size> {};

TEST_P(RandomWalk, FindsNothing) {
  const unsigned long seed = numberFrom("KIVA_WALK_SEED", std::random_device()());
  std::cout << "KIVA_WALK_SEED=" << seed << std::endl;
  const TemporaryFolder reports;
  Walk walk(seed, GetParam(), reports.Path());
  const auto keys = static_cast<int>(numberFrom("KIVA_WALK_KEYS", kKeys));
  walk.Go(keys);
  for (const auto& report : std::filesystem::directory_iterator(reports.Path()))
    ADD_FAILURE() << std::ifstream(report.path()).rdbuf();
  const auto lines = walk.Host().Journal("log.info");
  const auto logins = std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
    return line.ends_with(" logged in");
  });
  EXPECT_GT(logins, keys / 1000) << "it must get further than the door";
  std::cout << std::count(lines.begin(), lines.end(), "Starting KIVA") << " starts, " << logins
            << " logins, " << walk.Host().Journal("run").size() << " tools run" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Sizes, RandomWalk, testing::ValuesIn(kSizes), [](const auto& size) {
  return std::to_string(size.param.columns) + "x" + std::to_string(size.param.rows);
});

}  // namespace
