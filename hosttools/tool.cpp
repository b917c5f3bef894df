// SPDX-License-Identifier: MIT
#include "hosttools/tool.h"

#include <algorithm>
#include <array>
#include <exception>

namespace HostTools {

namespace {

constexpr std::array<Tool, 7> kTools = {{
    {"/bin/hmx-cmd",
     "hmx-cmd -U USER QUERY: asks the management agent as USER.\n"
     "  hmxsvc/auth/lockdown_is_enabled, hmxsvc/auth/lockdown_is_possible: true or false\n"
     "  internalsvc/refresh: lets the agent read the host anew\n"
     "  hostsvc/autostartmanager/autostop: stops the machines that autostart manages\n"
     "Status 255 when USER may not administer the host.\n",
     hmxCmd},
    {"/bin/halocli /sbin/halocli",
     "halocli network vswitch standard add -v SWITCH\n"
     "halocli network vswitch standard uplink add|remove -u UPLINK -v SWITCH\n"
     "halocli network vswitch standard portgroup add -p PORTGROUP -v SWITCH\n",
     halocli},
    {"/bin/openssl",
     "openssl x509 -in FILE -noout -fingerprint -sha1|-sha256: a certificate's thumbprint.\n",
     openssl},
    {"/usr/lib/corvo/openssh/bin/ssh-keygen", "ssh-keygen -l -f FILE: a host key's fingerprint.\n",
     sshKeygen},
    {"/bin/powerOffVms /sbin/powerOffVms",
     "powerOffVms [--terminate]: powers off every running machine; --terminate does not ask "
     "them.\n",
     powerOffVms},
    {"/usr/lib64/corvo/ovl-opsagent/bin/ovlcfg-vswitch",
     "ovlcfg-vswitch -m -p INTERFACE -I SWITCH: moves a kernel interface to a switch.\n",
     ovlcfgVswitch},
    {"/bin/sh",
     "sh -c LINE: runs one of the lines that the console uses; any other is status 127.\n", shell},
}};

bool isAt(const Tool& tool, std::string_view path) {
  for (std::string_view rest = tool.paths; !rest.empty();) {
    const std::size_t end = std::min(rest.find(' '), rest.size());
    if (rest.substr(0, end) == path) return true;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return false;
}

ToolAnswer runFound(const Tool& tool, ToolHost& host, Arguments arguments) {
  if (!arguments.empty() && arguments.front() == "--help") return {0, std::string(tool.help), ""};
  return tool.run(host, arguments);
}

}  // namespace

std::span<const Tool> allTools() {
  return kTools;
}

ToolAnswer runTool(ToolHost& host, const std::string& path,
                   const std::vector<std::string>& vector) try {
  if (auto rehearsed = host.FindRehearsal(path)) return *rehearsed;
  const auto* tool =
      std::find_if(kTools.begin(), kTools.end(), [&](const Tool& one) { return isAt(one, path); });
  if (tool == kTools.end()) return {127, "", path + ": no such tool\n"};
  return runFound(*tool, host, Arguments(vector).subspan(vector.empty() ? 0 : 1));
} catch (const std::exception& error) {
  return {1, "", path + ": " + error.what() + "\n"};
}

}  // namespace HostTools
