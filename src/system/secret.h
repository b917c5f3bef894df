// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "core/core_file_ban.h"

namespace Kiva {

/// A password or a PIN. It can be moved but not copied, and leaves no trace in memory when it goes,
/// nor in a core file while it is there. It is handed to the authentication stack or to a tool's
/// standard input, and never logged.
class Secret {
 public:
  Secret() : Secret(std::string_view()) {}
  explicit Secret(std::string_view text);
  Secret(Secret&& other) noexcept;
  Secret& operator=(Secret&& other) noexcept;
  ~Secret() { Wipe(); }

  std::string_view View() const { return {CString()}; }
  /// Ends with a zero byte; valid until the secret changes.
  const char* CString() const { return bytes_.empty() ? "" : bytes_.data(); }
  bool IsEmpty() const { return View().empty(); }
  bool operator==(const Secret& other) const { return View() == other.View(); }
  /// Overwrites the text; the secret is empty afterwards.
  void Wipe();

 private:
  std::vector<char> bytes_;
  CoreFileBan noCoreFile_;
};

}  // namespace Kiva
