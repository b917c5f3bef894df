// SPDX-License-Identifier: MIT
#include <charconv>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "hosttools/program.h"
#include "sample/sample_host.h"
#include "sample/sample_tool_host.h"

namespace {

constexpr int kUsage = 2;

constexpr const char* kHelp =
    "kiva-demo-tools --host DIR [--console PID] PATH ARGUMENT...: the tool that the sample host "
    "in\n"
    "DIR has at PATH. The console PID goes down with the host.\n"
    "NAME --host DIR ARGUMENT...: the same, through a link to kiva-demo-tools named like the "
    "tool.\n"
    "kiva-demo-tools --host DIR --help: every tool.\n";

std::optional<pid_t> readPid(const std::string& text) {
  pid_t pid = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, pid);
  if (error != std::errc() || stop != end || pid < 1) return std::nullopt;
  return pid;
}

}  // namespace

int main(int argc, char** argv) try {
  const std::vector<std::string> words(argv, argv + argc);
  if (words.size() == 2 && words[1] == "--help") return std::fputs(kHelp, stdout) < 0 ? 1 : 0;
  if (words.size() < 3 || words[1] != "--host") {
    std::fputs("kiva-demo-tools: expected --host DIR PATH ARGUMENT..., or --help\n", stderr);
    return kUsage;
  }
  const bool hasConsole = words.size() > 4 && words[3] == "--console";
  HostSample::openSampleHost(words[2]);
  HostSample::SampleToolHost host(words[2], hasConsole ? readPid(words[4]) : std::nullopt);
  return HostTools::runProgram(host, words[0], {words.begin() + (hasConsole ? 5 : 3), words.end()});
} catch (const std::exception& error) {
  std::fprintf(stderr, "kiva-demo-tools: %s\n", error.what());
  return kUsage;
}
