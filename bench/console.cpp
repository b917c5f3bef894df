// SPDX-License-Identifier: MIT
// What the console costs beside a bare curses program: start, keys, idling and memory. It prints
// figures and targets and judges nothing, because a time depends on the machine and its other work.
#include <chrono>
#include <cstdio>
#include <exception>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/figures.h"
#include "bench/measured_run.h"
#include "bench/process_cost.h"
#include "harness/demo_host.h"
#include "harness/keys.h"
#include "harness/virtual_terminal.h"

namespace {

using namespace Bench;
using Harness::keyBytes;
using Harness::Launch;

constexpr int kRuns = 15;
constexpr std::chrono::seconds kIdleTime{10};
constexpr const char* kMenuText = "System Customization";
constexpr const char* kLoginText = "Authentication Required";
constexpr const char* kDisabledText = "Authentication Denied";

enum class Program { Bare, Demo, Kiva };
constexpr Program kPrograms[] = {Program::Bare, Program::Demo, Program::Kiva};

/// One measurement of each run of each program.
using Samples = std::map<Program, std::vector<double>>;

struct Measurements {
  Samples paintTime, paintBytes, keyTime, keyBytes;
};

/// A run of a program, with the host that it runs on where it needs one.
struct Started {
  Started(Program program, const std::string& term)
      : host(program == Program::Demo ? std::make_unique<Harness::DemoHost>() : nullptr),
        run(LaunchOf(program, term)) {}

  std::unique_ptr<Harness::DemoHost> host;
  MeasuredRun run;

 private:
  Launch LaunchOf(Program program, const std::string& term) const {
    Launch launch = host ? host->Demo() : Launch{};
    if (program == Program::Bare) launch.arguments = {KIVA_BINARY_DIR "/bench_bare"};
    if (program == Program::Kiva) launch.arguments = {KIVA_BINARY_DIR "/kiva"};
    launch.term = term;
    return launch;
  }
};

/// Brings a run to where Down moves a highlight: the bare program is there, kiva-demo is in its
/// menu, and kiva, for which nobody has a password here, in its login dialog.
void goToList(Program program, MeasuredRun& run) {
  if (program == Program::Bare) return;
  run.Type(keyBytes("F2"));
  if (run.Shows(kDisabledText)) {
    throw std::runtime_error(
        "no keys measured: login is off, /var/run/corvo/show-kiva-login lacks");
  }
  if (!run.Shows(kLoginText)) throw std::runtime_error("F2 does not open the login dialog");
  if (program == Program::Kiva) return;
  run.Type(keyBytes("Down"));
  run.Type("demo");
  run.Type(keyBytes("Enter"));
  if (!run.Shows(kMenuText)) throw std::runtime_error("kiva-demo does not log in");
}

// From the first entry of the menu to its last, and back.
constexpr int kMenuMoves = 9;

void measureOnce(Program program, const std::string& term, Measurements& to) {
  Started started(program, term);
  MeasuredRun& run = started.run;
  to.paintTime[program].push_back(run.FirstPaint().milliseconds);
  to.paintBytes[program].push_back(static_cast<double>(run.FirstPaint().bytes));
  goToList(program, run);
  for (int press = 0; press < 2 * kMenuMoves; ++press) {
    const Burst burst = run.Type(keyBytes(press < kMenuMoves ? "Down" : "Up"));
    if (burst.bytes == 0) continue;
    to.keyTime[program].push_back(burst.milliseconds);
    to.keyBytes[program].push_back(static_cast<double>(burst.bytes));
  }
}

void printSamples(const std::string& what, Samples& samples, const std::string& target) {
  printRow({what, median(samples[Program::Bare]), median(samples[Program::Demo]),
            median(samples[Program::Kiva]), target});
}

/// Runs `work` for a program; what keeps it from being measured is said once.
template <typename Work>
void guarded(Program program, Work work) {
  static std::set<Program> told;
  constexpr const char* kNames[] = {"bare", "kiva-demo", "kiva"};
  try {
    work();
  } catch (const std::exception& error) {
    if (!told.insert(program).second) return;
    std::printf("%s: %s\n", kNames[static_cast<int>(program)], error.what());
  }
}

void measureTerminal(const std::string& term) {
  Measurements all;
  for (int i = 0; i < kRuns; ++i) {
    for (const Program program : kPrograms) {
      guarded(program, [&] { measureOnce(program, term, all); });
    }
  }
  printHead("TERM=" + term + ", 80 x 25");
  printSamples("first full paint, ms", all.paintTime, "ratio <= 2");
  printSamples("first full paint, bytes", all.paintBytes, "");
  printSamples("Down or Up to last byte, ms", all.keyTime, "ratio <= 2");
  printSamples("Down or Up, bytes (median)", all.keyBytes, "<= 600 (kiva-demo: menu)");
}

struct IdleCost {
  Samples switches, bytes, threads, memory;
};

void measureIdle(Program program, bool inList, IdleCost& to) {
  Started started(program, "xterm-256color");
  MeasuredRun& run = started.run;
  if (inList) goToList(program, run);
  const long before = switchesOf(run.Pid());
  to.bytes[program] = {static_cast<double>(run.BytesWithin(kIdleTime))};
  to.switches[program] = {static_cast<double>(switchesOf(run.Pid()) - before)};
  to.threads[program] = {static_cast<double>(threadsOf(run.Pid()))};
  to.memory[program] = {memoryOf(run.Pid())};
}

void measureIdling() {
  for (const bool inList : {false, true}) {
    IdleCost cost;
    for (const Program program : kPrograms) {
      guarded(program, [&] { measureIdle(program, inList, cost); });
    }
    printHead(inList ? "At rest, in menu (kiva: at login)" : "At rest, welcome screen");
    printSamples("voluntary switches in 10 s", cost.switches, "0");
    printSamples("bytes in 10 s", cost.bytes, "0");
    printSamples("threads", cost.threads, "<= 2");
    printSamples("memory (PSS), MiB", cost.memory, "<= 8");
  }
}

void measureEscape() {
  std::string reason;
  if (!Harness::VirtualTerminal::Available(reason)) {
    std::printf("\nEscape on a Linux console: not measured, %s\n", reason.c_str());
    return;
  }
  std::vector<double> times;
  for (int i = 0; i < kRuns; ++i) {
    const Harness::DemoHost host;
    Harness::VirtualTerminal terminal(host.Demo());
    terminal.Press("F2");
    terminal.WaitFor(kLoginText);
    const auto start = std::chrono::steady_clock::now();
    terminal.Send(keyBytes("Esc"));
    terminal.WaitUntil([](const auto& screen) { return !screen.Shows(kLoginText); },
                       "the login dialog to close");
    const auto time = std::chrono::steady_clock::now() - start;
    times.push_back(std::chrono::duration<double, std::milli>(time).count());
  }
  printHead("Linux console");
  printRow({"Escape to dialog gone, ms", {}, median(times), {}, "<= 60"});
}

}  // namespace

int main() {
  std::printf("Medians of %d alternated runs in one go.\n", kRuns);
  for (const char* term : {"xterm-256color", "vt102"}) measureTerminal(term);
  measureIdling();
  guarded(Program::Demo, measureEscape);
}
