// SPDX-License-Identifier: MIT
#include "harness/random_operator.h"

#include <csignal>
#include <stdexcept>

#include "harness/readiness.h"

namespace Harness {

using Json = nlohmann::json;

namespace {

std::string printable(const std::string& bytes) {
  constexpr char kDigits[] = "01234567";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (c >= ' ' && c <= '~' && c != '\\')
      text += c;
    else
      text += {'\\', kDigits[byte >> 6], kDigits[byte >> 3 & 7], kDigits[byte & 7]};
  }
  return text;
}

}  // namespace

RandomOperator::RandomOperator(unsigned long seed, Size size, Environment environment)
    : random_(seed), size_(size), environment_(std::move(environment)) {
  Restart();
}

bool RandomOperator::HasEnded() const {
  return kill(terminal_->Pid(), 0) != 0;
}

void RandomOperator::Press(unsigned long keys) {
  while (sent_ < keys || !HasEnded()) {
    if (HasEnded()) Restart();
    sent_ < keys ? Step() : terminal_->Signal(SIGTERM);
    Settle();
    if (!HasEnded()) continue;
    if (const int status = terminal_->WaitForExit(); status != 0)
      Fail("status " + std::to_string(status));
  }
}

void RandomOperator::Restart() {
  Launch launch = host_.Demo({"--clock-speed", OneOf({"1", "1", "100", "5000"})});
  launch.term = OneOf({"xterm-256color", "xterm-256color", "xterm", "vt102"});
  launch.environment = environment_;
  launch.environment.insert({{"ESCDELAY", "10"}, {"LESSSECURE", "1"}});
  terminal_.reset();
  terminal_ = std::make_unique<Terminal>(launch, size_);
  recent_.clear();
  Settle();
}

void RandomOperator::Step() {
  const int kind = Below(100);
  if (kind >= 24)
    PressSome(1 + Below(8));
  else if (kind >= 23)
    terminal_->Signal(OneOf({SIGUSR1, SIGUSR1, SIGUSR2, SIGINT, SIGWINCH}));
  else if (kind >= 20)
    ChangeHost();
  else if (kind >= 1)
    LogIn();
  else
    PressSome(300);
}

void RandomOperator::PressSome(int count) {
  std::string bytes;
  for (int i = 0; i < count; ++i) bytes += SomeKey();
  Send(bytes, count);
}

std::string RandomOperator::SomeKey() {
  if (Below(10) < 7)
    return keyBytes(OneOf({"Up",     "Up",        "Down",   "Down",    "Down", "Down", "Enter",
                           "Enter",  "Esc",       "Tab",    "F1",      "F2",   "F3",   "F4",
                           "F11",    "F12",       "Left",   "Right",   "End",  "Home", "Insert",
                           "Delete", "Backspace", "PageUp", "PageDown"}),
                    OneOf({KeyFamily::kXterm, KeyFamily::kVt220, KeyFamily::kLinuxConsole}));
  constexpr char kStopOutput = 'S' & 0x1f;  // the terminal itself would stand still
  const char byte = static_cast<char>(Below(10) > 0 ? ' ' + Below(95) : Below(256));
  return std::string(1, byte == kStopOutput ? ' ' : byte);
}

void RandomOperator::LogIn() {
  Send(keyBytes(OneOf({"F2", "F2", "F2", "F12"})), 1);
  Send(std::string("\t") + OneOf({"demo", "demo", "4711", "wrong"}) + "\r", 6);
  const int entry = Below(14);
  Send(repeated(keyBytes("Down"), entry) + static_cast<char>('0' + Below(10)), entry + 1);
}

void RandomOperator::ChangeHost() {
  const Json token = Below(2) ? Json{{"label", "Card"}, {"userId", "carla"}} : Json();
  host_.Set("/smartCardSlots/0/token", token);
  host_.Set("/lockdown/enabled", Below(2) == 0);
  host_.Set("/bootOption", Below(2));
  host_.Set("/welcomeMessage", Below(3) ? "" : "{align:right}{ip}\n{bgcolor:red}{hostname}");
  terminal_->Signal(SIGUSR1);
}

void RandomOperator::Send(const std::string& bytes, int keys) {
  Settle();
  if (HasEnded()) return;
  terminal_->Send(bytes);
  sent_ += static_cast<unsigned long>(keys);
  recent_ += bytes;
}

// The pager can be told to wait for nothing but an interrupt.
void RandomOperator::Settle() {
  terminal_->SetDeadline(std::chrono::seconds(1));
  for (int attempt = 0; attempt < 60; ++attempt) {
    try {
      return terminal_->Settle();
    } catch (const WaitFailed&) {
      if (foregroundOf(terminal_->Pid()) != terminal_->Pid()) terminal_->Send("\003q");
    }
  }
  Fail("it hangs");
}

void RandomOperator::Fail(const std::string& what) {
  throw std::runtime_error(what + " after " + printable(recent_) + "\n" + terminal_->Look().Dump());
}

}  // namespace Harness
