// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "harness/demo_host.h"
#include "harness/terminal.h"

namespace Harness {

/// kiva-demo at its welcome screen, on a sample host of its own.
struct Demo {
  explicit Demo(const nlohmann::json& changes = nlohmann::json::object(), Size size = {24, 80},
                std::optional<std::string> term = "xterm-256color");
  /// The same on a host whose files a test has changed.
  Demo(DemoHost& changedHost, Size size, std::optional<std::string> term = "xterm-256color");

  /// F2, a name and a password.
  void LogIn(const std::string& password = "demo");
  /// The journal's lines since the last call, or since the start.
  std::vector<std::string> NewLines();

  std::unique_ptr<DemoHost> ownHost;
  DemoHost& host;
  Terminal terminal;
  std::size_t linesSeen = 0;
};

using Lines = std::vector<std::string>;

}  // namespace Harness
