// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "harness/demo_host.h"

namespace TestSupport {

using Harness::DemoHost;

std::filesystem::path hostFile(const DemoHost& host);

/// host.json as it is, also where it is no JSON.
std::string hostText(const DemoHost& host);
void writeHostText(const DemoHost& host, const std::string& text);

/// Sets one value by its JSON pointer: setIn(host, "/lockdown/enabled", true).
void setIn(DemoHost& host, const std::string& pointer, const nlohmann::json& value);

}  // namespace TestSupport
