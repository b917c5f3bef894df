// SPDX-License-Identifier: MIT
#include "bench/process_cost.h"

#include <filesystem>
#include <fstream>
#include <string>

#include "harness/readiness.h"

namespace Bench {
namespace {

namespace fs = std::filesystem;

fs::path processFolder(pid_t pid) {
  return fs::path("/proc") / std::to_string(pid);
}

}  // namespace

long switchesOf(pid_t pid) {
  long all = 0;
  for (const auto& thread : fs::directory_iterator(processFolder(pid) / "task")) {
    all += Harness::sleepsOf(std::stoi(thread.path().filename()));
  }
  return all;
}

int threadsOf(pid_t pid) {
  const fs::directory_iterator threads(processFolder(pid) / "task");
  return static_cast<int>(std::distance(begin(threads), end(threads)));
}

double memoryOf(pid_t pid) {
  std::ifstream file(processFolder(pid) / "smaps_rollup");
  for (std::string word; file >> word;) {
    double kilobytes = 0;
    if (word == "Pss:" && file >> kilobytes) return kilobytes / 1024;
  }
  return 0;
}

}  // namespace Bench
