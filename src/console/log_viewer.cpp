// SPDX-License-Identifier: MIT
#include "console/log_viewer.h"

#include <cstdlib>
#include <string>

#include "core/key_wait.h"
#include "core/terminal_program.h"

namespace Kiva {

namespace {

constexpr const char* kSecureVariable = "LESSSECURE";
constexpr const char* kPrompt = "<Q> Quit </> RegExp Search <H> Help";

/// Keeps the pager from starting other programs or opening other files while this lives.
class SecurePager {
 public:
  SecurePager() {
    if (const char* value = std::getenv(kSecureVariable)) before_ = value;
    setenv(kSecureVariable, "1", 1);
  }
  ~SecurePager() { setenv(kSecureVariable, before_.c_str(), 1); }
  SecurePager(const SecurePager&) = delete;
  SecurePager& operator=(const SecurePager&) = delete;

 private:
  std::string before_;
};

}  // namespace

void viewLog(Window& window, const char* file) {
  keyWait().currentWindow = nullptr;
  {
    const SecurePager secure;
    const std::string path = HostCtl::Lib::platform().HostPath(file);
    runOnTerminal({"/bin/less", {"less", "-cfP", kPrompt, path}});
  }
  window.SetActive(false);
  window.SetActive(true);
  keyWait().currentWindow = &window;
}

}  // namespace Kiva
