// SPDX-License-Identifier: MIT
#pragma once

namespace Kiva {

/// Keeps a crash from writing what the process holds in memory into a core file (a program that the
/// kernel hands cores to has to respect the limit itself). Whatever holds a
/// password or a PIN has one and imposes it as long as there is a text: while any ban is imposed,
/// the soft limit of core files is zero; after the last it is what it was before. Children take the
/// limit over from the moment of their start, so a text should be wiped before a tool is run.
/// User-interface thread only.
class CoreFileBan {
 public:
  CoreFileBan() = default;
  CoreFileBan(const CoreFileBan&) = delete;
  CoreFileBan& operator=(const CoreFileBan&) = delete;
  ~CoreFileBan() { Lift(); }

  /// Either may be repeated.
  void Impose();
  void Lift();

 private:
  bool imposed_ = false;
};

}  // namespace Kiva
