// SPDX-License-Identifier: MIT
#pragma once

#include <vterm.h>

#include <memory>
#include <string_view>

#include "harness/screen.h"

namespace Harness {

/// The terminal emulator: bytes in, a screen out. Give it what OutputFilter lets pass.
class Emulator {
 public:
  explicit Emulator(Size size);

  void Write(std::string_view bytes);
  void Resize(Size size);
  Screen Look() const;

 private:
  static int OnProperty(VTermProp property, VTermValue* value, void* self);

  struct Free {
    void operator()(VTerm* vterm) const { vterm_free(vterm); }
  };
  std::unique_ptr<VTerm, Free> vterm_;
  VTermScreen* screen_;
  // Held by the library by address, therefore neither copied nor moved.
  struct Properties {
    bool cursorVisible = true;
  };
  std::unique_ptr<Properties> properties_;
};

}  // namespace Harness
