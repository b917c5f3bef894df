// SPDX-License-Identifier: MIT
#include "harness/readiness.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include <filesystem>

#include "hostctl/lib/descriptor.h"

namespace Harness {

using HostCtl::Lib::Descriptor;
namespace {

constexpr long kShortWaitMs = 2000;

std::string procPath(pid_t pid, const std::string& name) {
  return "/proc/" + std::to_string(pid) + "/" + name;
}

bool isTerminal(pid_t pid, int fd) {
  std::error_code error;
  const auto target =
      std::filesystem::read_symlink(procPath(pid, "fd/" + std::to_string(fd)), error).string();
  return !error && (target.starts_with("/dev/pts/") || target.starts_with("/dev/tty"));
}

/// Reads `count` values of another process's memory; an empty result when it may not.
template <typename T>
std::vector<T> peek(pid_t pid, unsigned long address, std::size_t count) {
  std::vector<T> values(count);
  const Descriptor memory(open(procPath(pid, "mem").c_str(), O_RDONLY | O_CLOEXEC));
  const auto size = static_cast<ssize_t>(count * sizeof(T));
  if (pread(memory.Get(), values.data(), size, static_cast<off_t>(address)) != size) return {};
  return values;
}

/// Curses, when it looks for the rest of a sequence, asks the terminal alone and not for long.
bool looksForMore(unsigned long count, long limitMs) {
  return count == 1 && limitMs >= 0 && limitMs <= kShortWaitMs;
}

bool pollsTerminal(pid_t pid, unsigned long address, unsigned long count) {
  for (const pollfd& polled : peek<pollfd>(pid, address, count)) {
    if ((polled.events & POLLIN) != 0 && isTerminal(pid, polled.fd)) return true;
  }
  return false;
}

/// The time that lies at `address`, or -1 for no time.
long millisecondsAt(pid_t pid, unsigned long address) {
  if (address == 0) return -1;
  const auto limit = peek<timespec>(pid, address, 1);
  return limit.empty() ? -1 : limit[0].tv_sec * 1000 + limit[0].tv_nsec / 1000000;
}

}  // namespace

pid_t foregroundOf(pid_t leader) {
  std::ifstream file(procPath(leader, "stat"));
  std::string line;
  std::getline(file, line);
  const auto afterName = line.rfind(')');
  int group = 0;
  // After the name: state, parent, group, session, terminal, foreground group.
  if (afterName == std::string::npos ||
      std::sscanf(line.c_str() + afterName + 1, " %*c %*d %*d %*d %*d %d", &group) != 1 ||
      group <= 0) {
    return leader;
  }
  return group;
}

bool waitsForKeys(pid_t pid) {
  std::ifstream file(procPath(pid, "syscall"));
  std::string line;
  std::getline(file, line);
  long number = 0;
  std::array<unsigned long, 3> argument{};
  if (std::sscanf(line.c_str(), "%ld %lx %lx %lx", &number, &argument[0], &argument[1],
                  &argument[2]) != 4) {
    return false;
  }
  if (number == SYS_read) return isTerminal(pid, static_cast<int>(argument[0]));
  if (number == SYS_ppoll) {
    return !looksForMore(argument[1], millisecondsAt(pid, argument[2])) &&
           pollsTerminal(pid, argument[0], argument[1]);
  }
#ifdef SYS_poll
  if (number == SYS_poll) {
    return !looksForMore(argument[1], static_cast<int>(argument[2])) &&
           pollsTerminal(pid, argument[0], argument[1]);
  }
#endif
  return false;
}

long sleepsOf(pid_t pid) {
  std::ifstream file(procPath(pid, "status"));
  std::string name;
  long count = 0;
  while (file >> name) {
    if (name == "voluntary_ctxt_switches:" && file >> count) return count;
  }
  return -1;
}

}  // namespace Harness
