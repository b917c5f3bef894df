// SPDX-License-Identifier: MIT
#include "harness/child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>

namespace Harness {
namespace {

std::vector<std::string> environmentOf(const Launch& launch) {
  std::map<std::string, std::string> all;
  for (const char* name : {"PATH", "HOME", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
    if (const char* value = std::getenv(name)) all[name] = value;
  }
  if (launch.term) all["TERM"] = *launch.term;
  for (const auto& [name, value] : launch.environment) all[name] = value;
  std::vector<std::string> lines;
  for (const auto& [name, value] : all) lines.push_back(name + "=" + value);
  return lines;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// A leader of a new session takes the first terminal that it opens as its controlling terminal.
pid_t spawnOn(const std::filesystem::path& terminal, char* const* arguments, char* const* environ) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, terminal.c_str(), O_RDWR, 0);
  posix_spawn_file_actions_adddup2(&files, STDIN_FILENO, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&files, STDIN_FILENO, STDERR_FILENO);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t all;
  sigset_t none;
  sigfillset(&all);
  sigemptyset(&none);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setflags(&attributes,
                           POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  pid_t pid = 0;
  const int error = posix_spawn(&pid, arguments[0], &files, &attributes, arguments, environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  if (error != 0) throw std::system_error(error, std::generic_category(), arguments[0]);
  return pid;
}

}  // namespace

Child::Child(const Launch& launch, const std::filesystem::path& terminal) {
  std::vector<std::string> arguments = launch.arguments;
  std::vector<std::string> variables = environmentOf(launch);
  pid_ = spawnOn(terminal, pointersTo(arguments).data(), pointersTo(variables).data());
}

void Child::Stop() {
  if (pid_ == 0 || status_) return;
  kill(-pid_, SIGKILL);
  while (waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
  }
  status_ = -SIGKILL;
}

std::optional<int> Child::Ended() {
  int status = 0;
  if (!status_ && waitpid(pid_, &status, WNOHANG) == pid_) {
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }
  return status_;
}

void Child::Signal(int number) const {
  kill(pid_, number);
}

}  // namespace Harness
