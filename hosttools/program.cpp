// SPDX-License-Identifier: MIT
#include "hosttools/program.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <optional>

namespace HostTools {

namespace {

constexpr int kTimeOver = 124;
/// For a path without a tool, where only a rehearsed answer is looked up.
constexpr int kOtherSeconds = 60;

/// Written before the alarm is set, because its handler may do next to nothing.
std::string timeOverLine;

void giveUp(int) {
  [[maybe_unused]] const ssize_t written =
      write(STDERR_FILENO, timeOverLine.data(), timeOverLine.size());
  _exit(kTimeOver);
}

/// A pipe may have nobody who empties it before the tool has ended, and may be both outputs.
std::size_t roomIn(std::FILE* file) {
  const int capacity = fcntl(fileno(file), F_GETPIPE_SZ);
  return capacity < 0 ? std::string::npos : static_cast<std::size_t>(capacity) / 2;
}

void writeOutput(const std::string& text, std::FILE* file) {
  std::fwrite(text.data(), 1, std::min(text.size(), roomIn(file)), file);
  std::fflush(file);
}

int printAll(const std::vector<ToolDescription>& tools) {
  for (const ToolDescription& tool : tools) {
    for (const std::string& path : tool.paths) std::printf("%s\n", path.c_str());
    std::printf("%s\n", tool.help.c_str());
  }
  return 0;
}

struct Found {
  std::string path;
  int seconds = 0;
};

/// The first tool at a path that `isIt` accepts.
template <typename Accepts>
std::optional<Found> findTool(const std::vector<ToolDescription>& tools, Accepts isIt) {
  for (const ToolDescription& tool : tools)
    for (const std::string& path : tool.paths)
      if (isIt(path)) return Found{path, tool.seconds};
  return std::nullopt;
}

template <typename Host>
int runBounded(Host& host, const Found& tool, std::vector<std::string> vector) {
  vector.insert(vector.begin(), lastComponent(tool.path));
  boundTime(vector.front(), tool.seconds);
  const ToolAnswer answer = runTool(host, tool.path, vector);
  alarm(0);
  writeOutput(answer.output, stdout);
  writeOutput(answer.error, stderr);
  return answer.status;
}

template <typename Host>
int run(Host& host, std::string_view program, std::vector<std::string> arguments) {
  const std::vector<ToolDescription> tools = toolsOf(host);
  const std::string name = lastComponent(program);
  const auto isCalled = [&](const std::string& path) { return lastComponent(path) == name; };
  if (const auto tool = findTool(tools, isCalled))
    return runBounded(host, *tool, std::move(arguments));
  if (arguments.empty()) {
    writeOutput("expected the path of a tool and its arguments, or --help\n", stderr);
    return kNoSuchTool;
  }
  if (arguments.front() == "--help") return printAll(tools);
  const std::string path = arguments.front();
  arguments.erase(arguments.begin());
  const auto tool = findTool(tools, [&](const std::string& one) { return one == path; });
  return runBounded(host, tool.value_or(Found{path, kOtherSeconds}), std::move(arguments));
}

}  // namespace

int runProgram(ToolHost& host, std::string_view program,
               const std::vector<std::string>& arguments) {
  return run(host, program, arguments);
}

int runProgram(StandInHost& host, std::string_view program,
               const std::vector<std::string>& arguments) {
  return run(host, program, arguments);
}

void boundTime(const std::string& name, int seconds) {
  timeOverLine = name + ": gave up after " + std::to_string(seconds) + " seconds\n";
  struct sigaction action {};
  action.sa_handler = giveUp;
  sigset_t alarmOnly;
  sigemptyset(&alarmOnly);
  sigaddset(&alarmOnly, SIGALRM);
  sigaction(SIGALRM, &action, nullptr);
  sigprocmask(SIG_UNBLOCK, &alarmOnly, nullptr);
  alarm(static_cast<unsigned>(seconds));
}

}  // namespace HostTools
