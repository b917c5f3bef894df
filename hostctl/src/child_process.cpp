// SPDX-License-Identifier: MIT
#include "hostctl/lib/child_process.h"

#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>

namespace HostCtl::Lib {

namespace {

struct FileActions {
  posix_spawn_file_actions_t value;
  FileActions() { posix_spawn_file_actions_init(&value); }
  FileActions(const FileActions&) = delete;
  ~FileActions() { posix_spawn_file_actions_destroy(&value); }
};

struct Attributes {
  posix_spawnattr_t value;
  Attributes() { posix_spawnattr_init(&value); }
  Attributes(const Attributes&) = delete;
  ~Attributes() { posix_spawnattr_destroy(&value); }
};

/// The caller's descriptors have the lowest free numbers and the input's is first, so no end that
/// is still needed lies on the number that is being set, even where the program itself has none of
/// the three.
int describeDescriptors(FileActions& actions, const ChildDescriptors& descriptors) {
  auto* value = &actions.value;
  if (int e = posix_spawn_file_actions_adddup2(value, descriptors.input.Get(), STDIN_FILENO))
    return e;
  if (int e = posix_spawn_file_actions_adddup2(value, descriptors.output.Get(), STDOUT_FILENO))
    return e;
  if (int e = posix_spawn_file_actions_adddup2(value, descriptors.errors.Get(), STDERR_FILENO))
    return e;
  return posix_spawn_file_actions_addclosefrom_np(value, STDERR_FILENO + 1);
}

void describeSignals(Attributes& attributes) {
  sigset_t none, all;
  sigemptyset(&none);
  sigfillset(&all);
  posix_spawnattr_setsigmask(&attributes.value, &none);
  posix_spawnattr_setsigdefault(&attributes.value, &all);
  posix_spawnattr_setflags(&attributes.value,
                           POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

}  // namespace

int startChild(Program program, const ChildDescriptors& descriptors, pid_t& child) {
  FileActions actions;
  if (const int error = describeDescriptors(actions, descriptors)) return error;
  Attributes attributes;
  describeSignals(attributes);
  std::vector<char*> vector;
  for (std::string& argument : program.arguments) vector.push_back(argument.data());
  vector.push_back(nullptr);
  char home[] = "PYTHONHOME=/";
  char* const environment[] = {home, nullptr};
  return posix_spawn(&child, program.path.c_str(), &actions.value, &attributes.value, vector.data(),
                     environment);
}

int waitForChild(pid_t child) {
  int status = -1;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

}  // namespace HostCtl::Lib
