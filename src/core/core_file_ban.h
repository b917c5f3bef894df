// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace Kiva {

/// Keeps a crash from writing what the process holds in memory into a core file. Whatever holds a
/// password or a PIN has one and imposes it as long as there is a text: while any ban is imposed,
/// the soft limit of core files is zero; after the last it is what it was before. Children take the
/// limit over from the moment of their start, so a text should be wiped before a tool is run.
/// User-interface thread only.
class CoreFileBan {
 public:
  CoreFileBan() = default;
  CoreFileBan(CoreFileBan&& other) noexcept : imposed_(std::exchange(other.imposed_, false)) {}
  CoreFileBan& operator=(CoreFileBan&& other) noexcept {
    std::swap(imposed_, other.imposed_);
    return *this;
  }
  ~CoreFileBan() { Lift(); }

  /// Either may be repeated.
  void Impose();
  void Lift();

 private:
  bool imposed_ = false;
};

}  // namespace Kiva
