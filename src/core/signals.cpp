// SPDX-License-Identifier: MIT
#include "core/signals.h"

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <optional>

#include "core/log.h"

namespace Kiva {

namespace {

constexpr int kSignals[] = {SIGINT, SIGQUIT, SIGTERM, SIGUSR1, SIGUSR2, SIGWINCH};

struct Pipe {
  int readEnd = -1;
  int writeEnd = -1;
};

Pipe& pipeInUse() {
  static Pipe one;
  return one;
}

sigset_t handledSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : kSignals) sigaddset(&set, number);
  return set;
}

std::optional<EventByte> eventOf(int signal) {
  switch (signal) {
    case SIGUSR1:
      return EventByte::SmartCard;
    case SIGUSR2:
      return EventByte::StopRequest;
    case SIGWINCH:
      return EventByte::Resize;
    case SIGINT:
    case SIGQUIT:
    case SIGTERM:
      return EventByte::Stop;
    default:
      return std::nullopt;
  }
}

void sendEvent(EventByte event) {
  const auto byte = static_cast<unsigned char>(event);
  while (write(pipeInUse().writeEnd, &byte, 1) <= 0 && errno == EINTR) {
  }
}

void* waitForSignals(void*) {
  const sigset_t set = handledSignals();
  for (;;) {
    int number = 0;
    errno = sigwait(&set, &number);
    if (errno != 0)
      logErrno("sigwait() failed");
    else if (const auto event = eventOf(number))
      sendEvent(*event);
  }
  return nullptr;
}

[[noreturn]] void failStart(const char* message) {
  logErrno(message);
  std::exit(1);
}

}  // namespace

void startSignalThread() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) failStart("pipe() failed");
  pipeInUse() = {ends[0], ends[1]};

  const sigset_t set = handledSignals();
  errno = pthread_sigmask(SIG_BLOCK, &set, nullptr);
  if (errno != 0) logErrno("pthread_sigmask() failed");

  pthread_t thread;
  errno = pthread_create(&thread, nullptr, waitForSignals, nullptr);
  if (errno != 0) failStart("pthread_create() failed");
}

int eventPipe() {
  return pipeInUse().readEnd;
}

}  // namespace Kiva
