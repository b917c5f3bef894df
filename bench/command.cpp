// SPDX-License-Identifier: MIT
// What it costs to run a host tool, beside starting the same program with posix_spawn alone, in a
// small process and in one that has touched much memory.
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <vector>

#include "bench/figures.h"
#include "linux/linux_host.h"
#include "system/run_command.h"

namespace {

constexpr int kRuns = 301;
constexpr std::size_t kMuchMemory = std::size_t{512} << 20;

template <typename Work>
double microseconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  const auto time = std::chrono::steady_clock::now() - start;
  return std::chrono::duration<double, std::micro>(time).count();
}

void spawnTrue() {
  char name[] = "true";
  char home[] = "PYTHONHOME=/";
  char* const arguments[] = {name, nullptr};
  char* const environment[] = {home, nullptr};
  pid_t child = 0;
  if (posix_spawn(&child, "/bin/true", nullptr, nullptr, arguments, environment) == 0) {
    waitpid(child, nullptr, 0);
  }
}

void runTrue() {
  Kiva::RunCommand(
      {.path = "/bin/true", .arguments = {"true"}, .outputCapacity = 4096, .errorCapacity = 4096});
}

void measure(const char* what) {
  std::vector<double> spawned;
  std::vector<double> run;
  for (int i = 0; i < kRuns; ++i) {
    spawned.push_back(microseconds(spawnTrue));
    run.push_back(microseconds(runTrue));
  }
  const double bare = *Bench::median(spawned);
  const double ours = *Bench::median(run);
  std::printf("%-40s %9.0f %9.0f %6.2f  ratio <= 1.3, no growth\n", what, bare, ours, ours / bare);
}

}  // namespace

int main() {
  signal(SIGPIPE, SIG_IGN);
  HostLinux::useLinuxHost();
  std::printf("\n%-40s %9s %9s %6s  target\n", "Run /bin/true, microseconds", "spawn", "RunCommand",
              "ratio");
  measure("in a small process");
  const std::vector<char> much(kMuchMemory, 1);
  measure(much.back() == 1 ? "with 512 MiB of touched memory" : "");
}
