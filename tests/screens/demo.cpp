// SPDX-License-Identifier: MIT
#include "tests/screens/demo.h"

namespace Harness {

namespace {

Launch launch(const DemoHost& host, std::optional<std::string> term) {
  Launch launch = host.Demo();
  launch.term = std::move(term);
  return launch;
}

}  // namespace

Demo::Demo(const nlohmann::json& changes, Size size, std::optional<std::string> term)
    : ownHost(std::make_unique<DemoHost>(changes)),
      host(*ownHost),
      terminal(launch(host, std::move(term)), size) {
  terminal.Settle();
}

Demo::Demo(DemoHost& changedHost, Size size, std::optional<std::string> term)
    : host(changedHost), terminal(launch(host, std::move(term)), size) {
  terminal.Settle();
}

void Demo::LogIn(const std::string& password) {
  terminal.Do({"F2", "wait:Authentication Required", "Down"});
  terminal.Type(password);
  terminal.Press("Enter");
}

Lines Demo::NewLines() {
  Lines all = host.Journal();
  Lines fresh(all.begin() + static_cast<std::ptrdiff_t>(linesSeen), all.end());
  linesSeen = all.size();
  return fresh;
}

}  // namespace Harness
