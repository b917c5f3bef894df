// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "harness/child.h"
#include "harness/screen.h"
#include "harness/temporary_folder.h"
#include "harness/vm/line_socket.h"
#include "harness/vm/screendump.h"

namespace Harness {

/// What a machine is started from.
struct MachineParts {
  std::filesystem::path folder;  ///< With "vmlinuz", "initrd" and, as /dev/vdb, "payload.tar".
  std::filesystem::path disk;    ///< A qcow2 file, /dev/vda, which it writes to.
  std::string snapshot = {};     ///< Of the disk, to go on from; without one it is switched on.
};

struct ShellAnswer {
  int status = -1;
  std::string output;
};

/// A whole PC in QEMU with a VGA text screen of 80 x 25 cells, typed at through its keyboard and
/// looked at through its screen. On its first serial line it has to have a root shell that writes
/// "ready" when it starts (tests/vm/make-image). Of its four NICs, 52:54:00:00:00:00 and so on, the
/// first leads to this host and SSH, and the other three meet in a hub; the monitor's "set_link
/// nic1 off" pulls the cable of one. Software emulation only: it is the same on every machine. It
/// is killed when this object goes. Waits throw WaitFailed, with the screen, when their deadline is
/// over.
class Machine {
 public:
  using Milliseconds = std::chrono::milliseconds;

  explicit Machine(const MachineParts& parts);

  /// The screen as the graphics card holds it; where the cursor is, it does not tell.
  Screen Look();
  /// The screen as it lights up.
  Screendump Photograph();

  /// Presses a key by its name (as keyBytes has them, or "Space").
  void Press(const std::string& key);
  /// Types letters, digits, "-", ".", ":", "/" and blanks, as on an American keyboard.
  void Type(std::string_view text);
  /// Takes the steps of an operator (harness/steps.h).
  void Do(const std::vector<std::string>& steps);

  /// They all wait for a screen that stays for a moment: a half-painted one shows and lacks
  /// anything.
  Screen WaitFor(const std::string& text);
  Screen WaitForGone(const std::string& text);
  Screen WaitUntil(const std::function<bool(const Screen&)>& isTrue, const std::string& what);
  /// Waits until the shell has started, after a start of the machine.
  void WaitForShell();
  /// Waits until the machine is off and QEMU has ended: by whose doing ("guest-shutdown").
  std::string WaitForPowerOff();

  /// Runs a script in the root shell.
  ShellAnswer Shell(const std::string& script);
  /// Runs a command of QEMU's monitor: its answer.
  std::string Monitor(const std::string& command);
  /// The port of this host's loopback address behind which the machine's SSH port lies.
  int SshPort();

 private:
  /// Reads lines until `isWanted` holds for one; throws WaitFailed for `what`, when `limit` is
  /// over.
  void ReadUntil(LineSocket& socket, const std::function<bool(const std::string&)>& isWanted,
                 const std::string& what, Milliseconds limit);
  std::string AnswerOfMonitor();
  void NoteEvent(const std::string& line);
  int DisplayRegister(int number);
  std::string File(const char* name) const { return (folder_.Path() / name).string(); }

  TemporaryFolder folder_;
  Child child_;
  LineSocket monitor_;
  LineSocket shell_;
  std::string shutdownReason_;
};

}  // namespace Harness
