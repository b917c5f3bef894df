// SPDX-License-Identifier: MIT
#include "core/terminal.h"

#include <curses.h>
#include <fcntl.h>
#include <linux/kd.h>
#include <linux/vt.h>
#include <sys/ioctl.h>
#include <term.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "core/log.h"
#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/platform.h"

namespace Kiva {

using HostCtl::Lib::Descriptor;

namespace {

constexpr const char* kFallbackType = "vt102";
constexpr int kHighestTerminal = 63;

termios& savedTermios() {
  static termios attributes{};
  return attributes;
}

bool cursesCanDrive(const char* term) {
  int error = 0;
  if (setupterm(term, STDOUT_FILENO, &error) != OK) return false;
  const bool addressable = cursor_address != nullptr;
  del_curterm(cur_term);
  return addressable;
}

}  // namespace

Terminal& terminal() {
  static Terminal one;
  return one;
}

bool isLinuxConsole() {
  char type = 0;
  return ioctl(STDOUT_FILENO, KDGKBTYPE, &type) == 0;
}

std::optional<int> parseVirtualTerminal(const char* text) {
  const long number = std::strtol(text, nullptr, 10);
  if (number < 1 || number > kHighestTerminal) return std::nullopt;
  return static_cast<int>(number);
}

TerminalType chooseTerminalType(bool linuxConsole, const char* term, const char* sshClient) {
  if (linuxConsole) return {"linux", true};
  if (!term || std::strcmp(term, "linux") == 0) return {kFallbackType, false};
  return {term, std::strcmp(term, "xterm") == 0 && !sshClient};
}

void prepareTerminalType() {
  const TerminalType type =
      chooseTerminalType(isLinuxConsole(), std::getenv("TERM"), std::getenv("SSH_CLIENT"));
  terminal().onLocalConsole = type.onLocalConsole;
  setenv("TERM", type.term.c_str(), 1);
  setenv("TERMINFO", "/usr/share/terminfo", 0);
}

void replaceUnusableTerminalType() {
  const char* type = std::getenv("TERM");
  if (cursesCanDrive(type)) return;
  logError("Cannot drive a terminal of type \"%s\", using %s", type, kFallbackType);
  setenv("TERM", kFallbackType, 1);
}

void saveTerminalAttributes() {
  tcgetattr(STDOUT_FILENO, &savedTermios());
}

void restoreTerminalAttributes() {
  tcsetattr(STDOUT_FILENO, TCSANOW, &savedTermios());
}

void switchToVirtualTerminal(int number) {
  const Descriptor console(
      open(HostCtl::Lib::platform().HostPath("/dev/console").c_str(), O_RDWR | O_CLOEXEC));
  if (!console) return;
  if (ioctl(console.Get(), VT_ACTIVATE, number) != 0) ioctl(console.Get(), VT_WAITACTIVE, number);
}

void takeVirtualTerminal() {
  if (terminal().vtNumber <= 0) return;
  switchToVirtualTerminal(terminal().vtNumber);
  savedTermios().c_cc[VSUSP] = 0;
  restoreTerminalAttributes();
}

}  // namespace Kiva
