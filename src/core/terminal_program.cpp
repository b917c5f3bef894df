// SPDX-License-Identifier: MIT
#include "core/terminal_program.h"

#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <vector>

#include "core/input.h"
#include "core/key_wait.h"
#include "core/screen.h"
#include "core/signals.h"
#include "core/terminal.h"
#include "hostctl/lib/descriptor.h"

namespace Kiva {

using HostCtl::Lib::Descriptor;

namespace {

// The group of the program that has the terminal, so that leaving the process takes it along.
pid_t& groupOnTerminal() {
  static pid_t group = 0;
  return group;
}

// The program itself ignores SIGTTOU, which would stop it for touching the terminal's group.
void takeTerminalBack() {
  tcsetpgrp(STDOUT_FILENO, getpgid(0));
}

void endGroupOnTerminal() {
  if (groupOnTerminal() <= 0) return;
  kill(-groupOnTerminal(), SIGTERM);
  kill(-groupOnTerminal(), SIGCONT);
  waitpid(groupOnTerminal(), nullptr, 0);
  takeTerminalBack();
}

class SpawnSettings {
 public:
  SpawnSettings() {
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_init(&actions);
    sigset_t set;
    sigemptyset(&set);
    posix_spawnattr_setsigmask(&attributes, &set);
    sigfillset(&set);
    posix_spawnattr_setsigdefault(&attributes, &set);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    if (tcgetpgrp(STDOUT_FILENO) >= 0)
      posix_spawn_file_actions_addtcsetpgrp_np(&actions, STDOUT_FILENO);
  }
  ~SpawnSettings() {
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  posix_spawnattr_t attributes;
  posix_spawn_file_actions_t actions;
};

pid_t start(HostCtl::Lib::Program program) {
  std::vector<char*> arguments;
  for (std::string& argument : program.arguments) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  const SpawnSettings settings;
  pid_t pid = 0;
  const int error = posix_spawn(&pid, program.path.c_str(), &settings.actions, &settings.attributes,
                                arguments.data(), environ);
  return error == 0 ? pid : 0;
}

// Waits for the end of the program and for events at the same time.
void waitForEnd(pid_t pid) {
  const Descriptor process(static_cast<int>(syscall(SYS_pidfd_open, pid, 0)));
  pollfd sources[] = {{process.Get(), POLLIN, 0}, {eventPipe(), POLLIN, 0}};
  while (process && !sources[0].revents) {
    if (poll(sources, 2, -1) < 0 || !sources[1].revents) continue;
    const int event = readEvent();
    if (event != Input::kResized) dispatchInput(event);
  }
  while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace

void runOnTerminal(const HostCtl::Lib::Program& program) {
  static const int registered = std::atexit(endGroupOnTerminal);
  static_cast<void>(registered);
  termios now{};
  tcgetattr(STDOUT_FILENO, &now);
  suspendScreen();
  restoreTerminalAttributes();
  if (const pid_t pid = start(HostCtl::Lib::platform().TerminalProgram(program))) {
    groupOnTerminal() = pid;
    waitForEnd(pid);
    groupOnTerminal() = 0;
  }
  takeTerminalBack();
  tcsetattr(STDOUT_FILENO, TCSANOW, &now);
  if (sizeChanged()) dispatchInput(Input::kResized);
  resumeScreen();
}

}  // namespace Kiva
