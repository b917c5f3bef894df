// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>

#include "hosttools/ovl_agent.h"

namespace HostTools {

namespace {

/// A line that the console gives to the shell, letter for letter. There is no shell behind it: what
/// is not in the table is not run.
struct Line {
  std::string_view text;
  ToolAnswer (*run)(ToolHost& host);
};

constexpr std::array<Line, 4> kLines = {{
    {"/etc/init.d/ovl-opsagent start",
     [](ToolHost& host) { return runInitScript(host, kOvlAgent, "start"); }},
    {"/etc/init.d/ovl-opsagent stop",
     [](ToolHost& host) { return runInitScript(host, kOvlAgent, "stop"); }},
    {"/etc/init.d/ovl-opsagent status",
     [](ToolHost& host) { return runInitScript(host, kOvlAgent, "status"); }},
    {"let v=`halocli --formatter=keyvalue software pak get -n ovl-opsagent | awk '/Version/{ "
     "split($0, kv, \"=\"); split(kv[2], ver, \".\"); print ver[1] }'`; (exit $((v < 3)))",
     checkOvlAgentVersion},
}};

}  // namespace

ToolAnswer shell(ToolHost& host, Arguments arguments) {
  if (arguments.size() != 2 || arguments[0] != "-c")
    return {127, "", "sh: only -c and a line that this host knows\n"};
  const auto* line = std::find_if(kLines.begin(), kLines.end(),
                                  [&](const Line& one) { return one.text == arguments[1]; });
  if (line == kLines.end()) return {127, "", "sh: " + arguments[1] + ": not found\n"};
  return line->run(host);
}

}  // namespace HostTools
