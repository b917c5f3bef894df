// SPDX-License-Identifier: MIT
#include "harness/terminal.h"

#include <utility>

namespace Harness {
namespace {

/// Then the terminal's output stands still.
constexpr int kMarkersLost = 4;

}  // namespace

Terminal::Terminal(const Launch& launch, Size size) : Terminal(launch, size, Pty(size)) {}

Terminal::Terminal(const Launch& launch, Size size, Pty pty)
    : Console(Child(launch, pty.Path())), pty_(std::move(pty)), emulator_(size) {}

void Terminal::Send(std::string_view bytes) {
  constexpr std::chrono::seconds kLongest{30};
  if (!WriteAll(&Pty::Write, bytes, kLongest)) throw WaitFailed("the terminal takes no more keys");
}

bool Terminal::WriteAll(std::size_t (Pty::*write)(std::string_view), std::string_view bytes,
                        Milliseconds longest) {
  const auto deadline = std::chrono::steady_clock::now() + longest;
  for (;;) {
    bytes.remove_prefix((pty_.*write)(bytes));
    if (bytes.empty()) return true;
    if (std::chrono::steady_clock::now() > deadline) return false;
    Take(pty_.Read(Milliseconds{10}));
  }
}

void Terminal::Resize(Size size) {
  emulator_.Resize(size);
  pty_.Resize(size);
}

std::size_t Terminal::BytesSince() {
  return output_.size() - std::exchange(counted_, output_.size());
}

void Terminal::Take(const std::string& bytes) {
  output_ += bytes;
  emulator_.Write(filter_.Pass(bytes));
}

void Terminal::Pump(Milliseconds limit) {
  Take(pty_.Read(limit));
}

void Terminal::Drain() {
  if (pty_.IsHungUp()) return;
  for (std::string bytes; !(bytes = pty_.Read(Milliseconds{0})).empty();) Take(bytes);
  // What a program writes reaches the other end a moment later, but in order: when a marker of our
  // own has come through, so has everything before it.
  const std::string name = std::to_string(++markers_);
  const std::string marker = "\033]K;" + name + "\a";
  const std::size_t start = output_.size();
  const auto mark = [&] { return WriteAll(&Pty::WriteAsProgram, marker, Milliseconds{2000}); };
  if (!mark()) return;
  for (int lost = 0; filter_.Marker() != name && lost < kMarkersLost;) {
    const std::string bytes = pty_.Read(Milliseconds{500});
    Take(bytes);
    if (!bytes.empty()) continue;
    // The terminal discards what is under way when somebody types an interrupt.
    ++lost;
    if (!mark()) return;
  }
  for (auto at = output_.find(marker, start); at != output_.npos; at = output_.find(marker, at))
    output_.erase(at, marker.size());
}

}  // namespace Harness
