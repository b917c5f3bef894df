// SPDX-License-Identifier: MIT
// What the network window costs on a Linux host, beside networkctl showing the same interface: on a
// machine of namespaces with a running networkd.
#include <chrono>
#include <cstdio>
#include <vector>

#include "bench/figures.h"
#include "harness/hosts/lab_console.h"

namespace {

using namespace HostLinux;

constexpr int kRuns = 15;

template <typename Work>
double milliseconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  const auto time = std::chrono::steady_clock::now() - start;
  return std::chrono::duration<double, std::milli>(time).count();
}

/// Until something that the next screen shows is there.
double answerTo(LabConsole& console, std::string_view bytes, const char* text) {
  return milliseconds([&] {
    console.Send(bytes);
    console.WaitForPassing(text);
  });
}

struct Times {
  std::vector<double> status, open, pass;
};

/// The suffixes that are chosen say the same as those that are there, in other words: a pass that
/// compares everything and has nothing to write.
void measureOnce(LabConsole& console, Times& times) {
  times.status.push_back(milliseconds([] { shell("exec networkctl status tarn0 >/dev/null"); }));
  console.Do({"focus:Configure Management Network"});
  times.open.push_back(answerTo(console, "\r", "VLAN (optional)"));
  console.Do({"choose:Custom", "wait:Suffixes:", "type:,", "Enter", "Esc", "wait:Apply changes"});
  times.pass.push_back(answerTo(console, "y", "System Customization"));
}

void printRow(const char* what, double status, double ours) {
  std::printf("%-40s %9.2f %9.2f %6.2f\n", what, status, ours, ours / status);
}

void measure() {
  const NetworkLab lab;
  lab.StartNetworkd();
  lab.StartHostnamed();
  lab.Serve("dhcp4");
  LabConsole console(lab);
  shell("halocli network restore");
  waitUntil([] { return shell("ip addr show tarn0 | grep -q 10.9.0.5"); });
  console.LogIn();
  Times times;
  for (int i = 0; i < kRuns; ++i) measureOnce(console, times);
  const double status = *Bench::median(times.status);
  std::printf("\n%-40s %9s %9s %6s\n", "Management network, milliseconds", "networkctl", "kiva",
              "ratio");
  printRow("opening the network window", status, *Bench::median(times.open));
  printRow("a pass that has nothing to change", status, *Bench::median(times.pass));
}

}  // namespace

int main() {
  if (const std::string why = LabConsole::Obstacle(); !why.empty())
    std::printf("\nManagement network: not measured, %s\n", why.c_str());
  else
    inNamespaces(measure);
}
