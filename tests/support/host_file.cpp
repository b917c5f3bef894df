// SPDX-License-Identifier: MIT
#include "tests/support/host_file.h"

#include <fstream>
#include <iterator>

namespace TestSupport {

std::filesystem::path hostFile(const DemoHost& host) {
  return host.Directory() / "host.json";
}

std::string hostText(const DemoHost& host) {
  std::ifstream in(hostFile(host));
  return {std::istreambuf_iterator<char>(in), {}};
}

void writeHostText(const DemoHost& host, const std::string& text) {
  std::ofstream(hostFile(host)) << text;
}

void setIn(DemoHost& host, const std::string& pointer, const nlohmann::json& value) {
  host.Change(nlohmann::json::array({{{"op", "add"}, {"path", pointer}, {"value", value}}}));
}

}  // namespace TestSupport
