// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "core/core_file_ban.h"

namespace Kiva {

/// A password or a PIN. It leaves no trace in memory when it goes, nor in a core file while it is
/// there. It is handed to the authentication stack, and never logged.
class Secret {
 public:
  explicit Secret(std::string_view text);
  Secret(const Secret&) = delete;
  Secret& operator=(const Secret&) = delete;
  ~Secret() { Wipe(); }

  std::string_view View() const { return {CString()}; }
  /// Ends with a zero byte; valid until the secret changes.
  const char* CString() const { return bytes_.empty() ? "" : bytes_.data(); }
  bool IsEmpty() const { return View().empty(); }

 private:
  void Wipe();

  std::vector<char> bytes_;
  CoreFileBan noCoreFile_;
};

}  // namespace Kiva
