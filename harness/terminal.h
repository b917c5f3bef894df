// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "harness/console.h"
#include "harness/emulator.h"
#include "harness/output_filter.h"
#include "harness/pty.h"

namespace Harness {

/// A program in a pseudo-terminal behind a terminal emulator.
class Terminal : public Console {
 public:
  explicit Terminal(const Launch& launch, Size size = {});

  Screen Look() override { return emulator_.Look(); }
  void Send(std::string_view bytes) override;
  void Resize(Size size);
  /// Takes the terminal away, as a line that drops or a window that is closed does.
  void HangUp() { pty_.HangUp(); }

  /// The palette as the program has redefined it.
  const OutputFilter& Palette() const { return filter_; }
  /// All bytes that the program has written.
  const std::string& Output() const { return output_; }
  /// How many bytes the program has written since the last call, or since its start.
  std::size_t BytesSince();

 protected:
  void Pump(Milliseconds limit) override;
  void Drain() override;
  bool HasTypeAhead() override { return pty_.HasTypeAhead(); }

 private:
  Terminal(const Launch& launch, Size size, Pty pty);
  void Take(const std::string& bytes);
  /// Writes, and takes in meanwhile what the program writes; false when that took too long.
  bool WriteAll(std::size_t (Pty::*write)(std::string_view), std::string_view bytes,
                Milliseconds longest);

  Pty pty_;
  OutputFilter filter_;
  Emulator emulator_;
  std::string output_;
  std::size_t counted_ = 0;
  unsigned markers_ = 0;
};

}  // namespace Harness
