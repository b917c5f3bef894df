// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "harness/console.h"
#include "hostctl/lib/descriptor.h"

namespace Harness {

/// A Linux virtual terminal of this machine that nobody uses, locked against other tests. It goes
/// back to the kernel with this object.
class FreeVirtualTerminal {
 public:
  /// Takes one; throws std::runtime_error, with the reason, where this machine gives none.
  FreeVirtualTerminal();
  FreeVirtualTerminal(FreeVirtualTerminal&&) = default;
  ~FreeVirtualTerminal();

  int Number() const { return number_; }
  std::string Path() const { return "/dev/tty" + std::to_string(number_); }
  int Device() const { return device_.Get(); }

 private:
  int number_ = 0;
  HostCtl::Lib::Descriptor device_;
};

/// A program on a real Linux virtual terminal: TERM=linux, sixteen colours, line drawing. Its size
/// is the machine's; what it shows is read back from the kernel. The kernel does not tell whether
/// the cursor is visible, nor what the palette is.
class VirtualTerminal : public Console {
 public:
  /// Whether this machine and this user can drive a virtual terminal; if not, `reason` says why.
  static bool Available(std::string& reason);

  explicit VirtualTerminal(const Launch& launch);
  ~VirtualTerminal() override;

  int Number() const { return terminal_.Number(); }
  std::string Path() const { return terminal_.Path(); }
  Screen Look() override;
  void Send(std::string_view bytes) override;

 protected:
  void Pump(Milliseconds limit) override;
  void Drain() override {}  // the kernel paints within the program's own write
  bool HasTypeAhead() override;

 private:
  VirtualTerminal(const Launch& launch, FreeVirtualTerminal terminal);

  FreeVirtualTerminal terminal_;
  HostCtl::Lib::Descriptor characters_;
  HostCtl::Lib::Descriptor attributes_;
};

/// The colours of an attribute byte of a virtual terminal. There blue is bit 0 and red bit 2 of a
/// colour; here they are numbered as curses and the escape sequences do.
Colours coloursOfAttribute(std::uint8_t attribute);

}  // namespace Harness
