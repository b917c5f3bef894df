// SPDX-License-Identifier: MIT
#include "harness/virtual_terminal.h"

#include <fcntl.h>
#include <linux/kd.h>
#include <linux/vt.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

#include <cerrno>
#include <cstring>
#include <thread>
#include <vector>

namespace Harness {

using HostCtl::Lib::Descriptor;
namespace {

constexpr int kFirstNumber = 40;
constexpr int kLastNumber = 60;
constexpr int kMemoryMajor = 7;
constexpr int kCharacterMinor = 64;
constexpr int kAttributeMinor = 128;

[[noreturn]] void fail(const std::string& what) {
  throw std::runtime_error(what + ": " + std::strerror(errno));
}

Descriptor openTerminal(const std::string& path) {
  return Descriptor(open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
}

/// Opens a terminal's memory; a device file that was missing is gone again afterwards.
Descriptor openMemory(const std::string& path, int minor) {
  const bool made = mknod(path.c_str(), S_IFCHR | 0600, makedev(kMemoryMajor, minor)) == 0;
  Descriptor memory(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (made) unlink(path.c_str());
  if (!memory) fail(path);
  return memory;
}

template <typename T>
std::vector<T> readAll(int fd, std::size_t count) {
  std::vector<T> values(count);
  const ssize_t size = pread(fd, values.data(), count * sizeof(T), 0);
  values.resize(size > 0 ? size / sizeof(T) : 0);
  return values;
}

int swapRedAndBlue(int colour) {
  return (colour & 0b1010) | (colour & 1) << 2 | (colour & 4) >> 2;
}

}  // namespace

Colours coloursOfAttribute(std::uint8_t attribute) {
  return {swapRedAndBlue(attribute & 0xf), swapRedAndBlue(attribute >> 4 & 0x7)};
}

FreeVirtualTerminal::FreeVirtualTerminal() {
  int keyboard = 0;
  for (number_ = kFirstNumber; number_ <= kLastNumber; ++number_) {
    device_ = openTerminal(Path());
    if (!device_) fail(Path());
    if (ioctl(Device(), KDGKBTYPE, &keyboard) != 0) fail(Path() + " is not a virtual terminal");
    if (flock(Device(), LOCK_EX | LOCK_NB) == 0) return;
  }
  throw std::runtime_error("all virtual terminals for tests are in use");
}

FreeVirtualTerminal::~FreeVirtualTerminal() {
  if (!device_) return;
  device_.Close();
  const Descriptor any = openTerminal("/dev/tty0");
  ioctl(any.Get(), VT_DISALLOCATE, number_);
}

bool VirtualTerminal::Available(std::string& reason) {
  try {
    const FreeVirtualTerminal terminal;
    openMemory("/dev/vcsu" + std::to_string(terminal.Number()),
               kCharacterMinor + terminal.Number());
    const char blank = ' ';
    if (ioctl(terminal.Device(), TIOCSTI, &blank) != 0) fail("typing on " + terminal.Path());
    tcflush(terminal.Device(), TCIFLUSH);
    return true;
  } catch (const std::runtime_error& error) {
    reason = error.what();
    return false;
  }
}

VirtualTerminal::VirtualTerminal(const Launch& launch)
    : VirtualTerminal(launch, FreeVirtualTerminal()) {}

VirtualTerminal::VirtualTerminal(const Launch& launch, FreeVirtualTerminal terminal)
    : Console(Child(launch, terminal.Path())),
      terminal_(std::move(terminal)),
      characters_(openMemory("/dev/vcsu" + std::to_string(Number()), kCharacterMinor + Number())),
      attributes_(openMemory("/dev/vcsa" + std::to_string(Number()), kAttributeMinor + Number())) {
  UseKeys(KeyFamily::kLinuxConsole);
}

VirtualTerminal::~VirtualTerminal() {
  child_.Stop();  // while it runs, its terminal cannot go back
}

Screen VirtualTerminal::Look() {
  const auto head = readAll<std::uint8_t>(attributes_.Get(), 4);
  if (head.size() != 4) fail("the memory of " + terminal_.Path());
  Screen screen({head[0], head[1]});
  screen.cursor = {head[3], head[2]};
  const std::size_t cells = std::size_t{head[0]} * head[1];
  const auto characters = readAll<std::uint32_t>(characters_.Get(), cells);
  const auto attributes = readAll<std::uint8_t>(attributes_.Get(), 4 + 2 * cells);
  if (characters.size() != cells || attributes.size() != 4 + 2 * cells) {
    fail("the memory of " + terminal_.Path());
  }
  for (std::size_t i = 0; i < cells; ++i) {
    Cell& cell = screen.At(static_cast<int>(i / head[1]), static_cast<int>(i % head[1]));
    cell.text = utf8(characters[i]);
    cell.colours = coloursOfAttribute(attributes[4 + 2 * i + 1]);
  }
  return screen;
}

void VirtualTerminal::Send(std::string_view bytes) {
  for (const char byte : bytes) {
    if (ioctl(terminal_.Device(), TIOCSTI, &byte) != 0) fail("typing on " + terminal_.Path());
  }
}

void VirtualTerminal::Pump(Milliseconds limit) {
  std::this_thread::sleep_for(limit);
}

bool VirtualTerminal::HasTypeAhead() {
  int waiting = 0;
  return ioctl(terminal_.Device(), FIONREAD, &waiting) == 0 && waiting > 0;
}

}  // namespace Harness
