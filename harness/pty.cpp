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

std::size_t writeWhatFits(int fd, std::string_view bytes) {
  const ssize_t written = write(fd, bytes.data(), bytes.size());
  if (written < 0 && errno != EINTR && errno != EAGAIN) fail("write to a pseudo-terminal");
  return written > 0 ? static_cast<std::size_t>(written) : 0;
}

}  // namespace

// Neither end may block: who waits to write would not read what the program waits to write.
Pty::Pty(Size size) : master_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
  if (!master_ || grantpt(master_.Get()) != 0 || unlockpt(master_.Get()) != 0) {
    fail("posix_openpt");
  }
  path_ = ptsname(master_.Get());
  slave_ = Descriptor(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
  if (!slave_) fail(path_.c_str());
  Resize(size);
}

void Pty::Resize(Size size) {
  winsize window{};
  window.ws_row = static_cast<unsigned short>(size.rows);
  window.ws_col = static_cast<unsigned short>(size.columns);
  if (ioctl(master_.Get(), TIOCSWINSZ, &window) != 0) fail("TIOCSWINSZ");
}

std::size_t Pty::Write(std::string_view bytes) {
  return writeWhatFits(master_.Get(), bytes);
}

std::size_t Pty::WriteAsProgram(std::string_view bytes) {
  return writeWhatFits(slave_.Get(), bytes);
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
