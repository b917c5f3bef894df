// SPDX-License-Identifier: MIT
#include "system/run_command.h"

#include <fcntl.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <mutex>
#include <optional>

#include "core/log.h"
#include "hostctl/lib/child_process.h"

namespace Kiva {

using namespace HostCtl::Lib;

namespace {

constexpr int kPollMicroseconds = 20'000;
constexpr int kNeverWaited = -1;

/// Children that were killed and not waited for, so that none of them stays a zombie for long.
class KilledChildren {
 public:
  void Add(pid_t child) {
    const std::lock_guard lock(mutex_);
    children_.push_back(child);
  }
  void Reap() {
    const std::lock_guard lock(mutex_);
    std::erase_if(children_, [](pid_t child) { return waitpid(child, nullptr, WNOHANG) != 0; });
  }

 private:
  std::mutex mutex_;
  std::vector<pid_t> children_;
};

KilledChildren& killedChildren() {
  static KilledChildren one;
  return one;
}

struct Pipe {
  Descriptor read, write;
};

std::optional<Pipe> makePipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
  return Pipe{Descriptor(ends[0]), Descriptor(ends[1])};
}

struct Pipes {
  Pipe input, output, errors;
};

std::optional<Pipes> makePipes() {
  auto input = makePipe();
  if (!input) return std::nullopt;
  auto output = makePipe();
  if (!output) return std::nullopt;
  auto errors = makePipe();
  if (!errors) return std::nullopt;
  return Pipes{std::move(*input), std::move(*output), std::move(*errors)};
}

void writeWhole(const Descriptor& pipe, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(pipe.Get(), text.data(), text.size());
    if (count > 0)
      text.remove_prefix(static_cast<std::size_t>(count));
    else if (count == 0 || (errno != EAGAIN && errno != EINTR))
      return;
  }
}

int waitWithin(pid_t child, int seconds) {
  int status = kNeverWaited;
  long long budget = seconds * 1'000'000LL;
  while (waitpid(child, &status, WNOHANG) == 0) {
    usleep(kPollMicroseconds);
    budget -= kPollMicroseconds;
    if (budget >= 1) continue;
    logWarning("Killing process because %d seconds timeout expired", seconds);
    kill(-child, SIGKILL);
    killedChildren().Add(child);
    return kNeverWaited;
  }
  return status;
}

/// What the pipe holds now. A grandchild that outlives the child may keep the other end open, so an
/// end of file is not waited for.
std::string readAvailable(const Descriptor& pipe, std::size_t capacity) {
  if (capacity == 0 || fcntl(pipe.Get(), F_SETFL, O_NONBLOCK) != 0) return {};
  std::string text(capacity, '\0');
  std::size_t length = 0;
  while (length < capacity) {
    const ssize_t count = read(pipe.Get(), text.data() + length, capacity - length);
    if (count > 0)
      length += static_cast<std::size_t>(count);
    else if (count == 0 || errno == EAGAIN)
      break;
    else if (errno != EINTR)
      return {};
  }
  text.resize(length);
  return text;
}

int exitCode(int status) {
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  logError("Run Command did not terminate normally");
  return -1;
}

}  // namespace

CommandResult RunCommand(const Command& command) {
  killedChildren().Reap();
  CommandResult result;
  auto pipes = makePipes();
  if (!pipes) {
    result.startError = errno;
    return result;
  }
  pid_t child = -1;
  result.startError =
      startChild(platform().ChildProgram({command.path, command.arguments}),
                 {pipes->input.read, pipes->output.write, pipes->errors.write}, child);
  if (result.startError != 0) return result;
  pipes->input.read.Close();
  pipes->output.write.Close();
  pipes->errors.write.Close();

  writeWhole(pipes->input.write, command.input);
  pipes->input.write.Close();
  const int status =
      command.timeOutSeconds > 0 ? waitWithin(child, command.timeOutSeconds) : waitForChild(child);
  result.output = readAvailable(pipes->output.read, command.outputCapacity);
  result.errors = readAvailable(pipes->errors.read, command.errorCapacity);
  result.status = exitCode(status);
  return result;
}

}  // namespace Kiva
