// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>

#include "hosttools/tool.h"

namespace HostTools {

namespace {

constexpr std::string_view kServiceUser = "kiva";
constexpr int kNotAsThatUser = 255;

struct Query {
  std::string_view name;
  ToolAnswer (*answer)(ToolHost& host);
};

ToolAnswer truth(bool value) {
  return {0, value ? "true\n" : "false\n", ""};
}

/// The agent of this host keeps nothing of its own, so there is nothing that a refresh could
/// change.
ToolAnswer refresh(ToolHost&) {
  return {};
}

ToolAnswer autostop(ToolHost& host) {
  host.StopManagedMachines();
  return {};
}

constexpr std::array<Query, 4> kQueries = {{
    {"hmxsvc/auth/lockdown_is_enabled",
     [](ToolHost& host) { return truth(host.IsLockdownEnabled()); }},
    {"hmxsvc/auth/lockdown_is_possible",
     [](ToolHost& host) { return truth(host.IsLockdownPossible()); }},
    {"internalsvc/refresh", refresh},
    {"hostsvc/autostartmanager/autostop", autostop},
}};

}  // namespace

ToolAnswer hmxCmd(ToolHost& host, Arguments arguments) {
  if (arguments.size() != 3 || arguments[0] != "-U")
    return {1, "", "hmx-cmd: expected -U USER QUERY\n"};
  const std::string& user = arguments[1];
  if (user != kServiceUser && !host.MayAdminister(user))
    return {kNotAsThatUser, "", "hmx-cmd: " + user + " may not administer this host\n"};
  const auto* query = std::find_if(kQueries.begin(), kQueries.end(),
                                   [&](const Query& one) { return one.name == arguments[2]; });
  if (query == kQueries.end()) return {1, "", "hmx-cmd: no such query: " + arguments[2] + "\n"};
  return query->answer(host);
}

}  // namespace HostTools
