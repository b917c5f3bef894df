// SPDX-License-Identifier: MIT
#include "harness/pty.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace Harness {

using HostCtl::Lib::Descriptor;
namespace {

[[noreturn]] void fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

void writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) fail("write to a pseudo-terminal");
    if (written > 0) bytes.remove_prefix(written);
  }
}

}  // namespace

Pty::Pty(Size size) : master_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
  if (!master_ || grantpt(master_.Get()) != 0 || unlockpt(master_.Get()) != 0) {
    fail("posix_openpt");
  }
  path_ = ptsname(master_.Get());
  slave_ = Descriptor(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!slave_) fail(path_.c_str());
  Resize(size);
}

void Pty::Resize(Size size) {
  winsize window{};
  window.ws_row = static_cast<unsigned short>(size.rows);
  window.ws_col = static_cast<unsigned short>(size.columns);
  if (ioctl(master_.Get(), TIOCSWINSZ, &window) != 0) fail("TIOCSWINSZ");
}

void Pty::Write(std::string_view bytes) {
  writeAll(master_.Get(), bytes);
}

void Pty::WriteAsProgram(std::string_view bytes) {
  writeAll(slave_.Get(), bytes);
}

std::string Pty::Read(std::chrono::milliseconds limit) {
  pollfd polled{master_.Get(), POLLIN, 0};
  if (poll(&polled, 1, static_cast<int>(limit.count())) <= 0) return {};
  std::string bytes(65536, '\0');
  const ssize_t size = read(master_.Get(), bytes.data(), bytes.size());
  bytes.resize(size > 0 ? size : 0);
  return bytes;
}

bool Pty::HasTypeAhead() const {
  int waiting = 0;
  return ioctl(slave_.Get(), FIONREAD, &waiting) == 0 && waiting > 0;
}

}  // namespace Harness
