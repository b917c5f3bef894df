// SPDX-License-Identifier: MIT
#include "linux/run_program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <optional>
#include <thread>

#include "hostctl/lib/child_process.h"
#include "linux/text.h"

namespace HostLinux {

using namespace HostCtl::Lib;
using Clock = std::chrono::steady_clock;

namespace {

constexpr std::chrono::milliseconds kLook{5};

/// Takes what has been written so far; what is too much is read and dropped, so that the program
/// never waits for us. One call takes a pipe's worth at most: whoever writes without an end, the
/// program or one that outlives it, must not keep us here.
void takeOutput(const Descriptor& pipe, std::string& output, std::size_t most) {
  char block[4096];
  for (int blocks = 0; blocks < 16; ++blocks) {
    const ssize_t count = read(pipe.Get(), block, sizeof block);
    if (count <= 0) return;
    output.append(block, std::min(static_cast<std::size_t>(count), most - output.size()));
  }
}

void waitForOutput(const Descriptor& pipe) {
  pollfd ready{pipe.Get(), POLLIN, 0};
  poll(&ready, 1, static_cast<int>(kLook.count()));
  // Closed by the program, which goes on: poll would not wait any more.
  if ((ready.revents & POLLHUP) != 0) std::this_thread::sleep_for(kLook);
}

/// The status word, or nothing when the time is over.
std::optional<int> statusBefore(Clock::time_point end, pid_t child, const Descriptor& pipe,
                                std::string& output, std::size_t most) {
  // All ones, as for a child that was killed, where somebody else has taken its status.
  int status = -1;
  while (waitpid(child, &status, WNOHANG) == 0) {
    if (Clock::now() >= end) return std::nullopt;
    waitForOutput(pipe);
    takeOutput(pipe, output, most);
  }
  takeOutput(pipe, output, most);
  return status;
}

ProgramResult failed(const std::string& why) {
  return {-1, why};
}

}  // namespace

ProgramResult runProgram(const Program& program, std::chrono::milliseconds limit,
                         std::size_t mostOutput) {
  int ends[2];
  const Descriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  if (!nothing || pipe2(ends, O_CLOEXEC) != 0) return failed(std::strerror(errno));
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  fcntl(reading.Get(), F_SETFL, O_NONBLOCK);
  pid_t child = -1;
  if (const int error = startChild(program, {nothing, writing, writing}, child))
    return failed(program.path + ": " + std::strerror(error));
  writing.Close();

  std::string output;
  const auto status = statusBefore(Clock::now() + limit, child, reading, output, mostOutput);
  if (!status) {
    kill(-child, SIGKILL);
    waitForChild(child);
    return failed(program.path + " did not end in time");
  }
  if (!WIFEXITED(*status)) return failed(program.path + " was killed");
  return {WEXITSTATUS(*status), std::move(output)};
}

std::string causeOf(const ProgramResult& result) {
  for (const std::string_view line : lines(result.output))
    if (!trim(line).empty() && line.find("warning:") == line.npos) return std::string(trim(line));
  return "status " + std::to_string(result.status);
}

}  // namespace HostLinux
