// SPDX-License-Identifier: MIT
#include "linux/network/network_lock.h"

#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace HostLinux {

namespace {

void takeAlarm() {
  sigset_t alarmOnly;
  sigemptyset(&alarmOnly);
  sigaddset(&alarmOnly, SIGALRM);
  const timespec now{};
  sigtimedwait(&alarmOnly, nullptr, &now);
}

}  // namespace

StopsPutOff::StopsPutOff() {
  sigset_t stops, before;
  sigemptyset(&stops);
  for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGALRM}) sigaddset(&stops, signal);
  if (pthread_sigmask(SIG_BLOCK, &stops, &before) == 0) before_ = before;
}

StopsPutOff::~StopsPutOff() {
  if (!before_) return;
  if (!sigismember(&*before_, SIGALRM)) takeAlarm();
  pthread_sigmask(SIG_SETMASK, &*before_, nullptr);
}

std::string NetworkLock::Note() const {
  std::string note(4096, '\0');
  const ssize_t length = pread(locked_.Get(), note.data(), note.size(), 0);
  note.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
  return note;
}

void NetworkLock::SetNote(const std::string& note) const {
  const bool set =
      ftruncate(locked_.Get(), 0) == 0 && pwrite(locked_.Get(), note.data(), note.size(), 0) >= 0;
  if (!set)
    syslog(LOG_USER | LOG_WARNING, "The lock of the network takes no note: %s",
           std::strerror(errno));
}

}  // namespace HostLinux
