// SPDX-License-Identifier: MIT
#include <array>
#include <exception>
#include <string>

#include "hostctl/network/switch_names.h"
#include "hosttools/advanced_options.h"
#include "hosttools/network_lists.h"
#include "hosttools/tools.h"

namespace HostTools {

namespace {

using HostSeam::UplinkChange;

constexpr int kTrunkVlan = 4095;

ToolAnswer addSwitch(ToolHost& host, const Call& call) {
  if (!HostCtl::Network::isSwitchName(call["-v"]))
    throw UsageError("a switch's name has at most " +
                     std::to_string(HostCtl::Network::kLongestSwitchName) +
                     " letters, digits, dots, underscores and hyphens, with neither a dot nor a "
                     "hyphen in front; it is no number, neither \"all\" nor \"default\", and "
                     "ends neither in \"-bond\" nor in \"-port\"");
  host.AddStandardSwitch(call["-v"]);
  return {};
}

ToolAnswer addUplink(ToolHost& host, const Call& call) {
  host.ChangeUplink(UplinkChange::Add, call["-u"], call["-v"]);
  return {};
}

ToolAnswer removeUplink(ToolHost& host, const Call& call) {
  host.ChangeUplink(UplinkChange::Remove, call["-u"], call["-v"]);
  return {};
}

ToolAnswer addPortGroup(ToolHost& host, const Call& call) {
  if (!HostCtl::Network::isPortGroupName(call["-p"]))
    throw UsageError("a port group's name has at most " +
                     std::to_string(HostCtl::Network::kLongestPortGroupName) +
                     " printable characters, no slash and no blank at either end, and is "
                     "neither \".\" nor \"..\"");
  host.AddPortGroup(call["-p"], call["-v"]);
  return {};
}

ToolAnswer removeSwitch(ToolHost& host, const Call& call) {
  host.RemoveStandardSwitch(call["-v"]);
  return {};
}

ToolAnswer removePortGroup(ToolHost& host, const Call& call) {
  host.RemovePortGroup(call["-p"], call["-v"]);
  return {};
}

ToolAnswer setPortGroupVlan(ToolHost& host, const Call& call) {
  const auto vlanId = static_cast<int>(readNumber("-i", call["-i"], 0, kTrunkVlan));
  host.SetPortGroupVlan(call["-p"], call["-v"], vlanId);
  return {};
}

ToolAnswer restoreNetwork(ToolHost& host, const Call&) {
  host.RestoreNetwork();
  return {};
}

ToolAnswer setNumber(ToolHost& host, const Call& call) {
  const AdvancedOption& option = optionAt(call["-o"]);
  host.WriteOption(call["-o"], readValue(option, call["-i"]));
  return {};
}

/// Every option is a number at present; whoever gives a text learns which numbers there are.
ToolAnswer setText(ToolHost&, const Call& call) {
  throw UsageError(std::string(optionAt(call["-o"]).path) + " is a number: use -i");
}

std::string shown(ToolHost& host, const AdvancedOption& option) {
  return std::string(option.path) + " = " + valueOn(host, option) + "\n    " +
         std::to_string(option.least) + " to " + std::to_string(option.most) + ", as delivered " +
         std::to_string(option.standard) + ": " + std::string(option.about) + "\n";
}

ToolAnswer listOptions(ToolHost& host, const Call& call) {
  if (call.Has("-o")) return {0, shown(host, optionAt(call["-o"])), ""};
  ToolAnswer answer;
  for (const AdvancedOption& option : advancedOptions()) answer.output += shown(host, option);
  return answer;
}

template <std::string (*Table)()>
ToolAnswer list(ToolHost&, const Call&) {
  return {0, Table(), ""};
}

constexpr std::array<Command<ToolHost>, 17> kCommands = {{
    {"network ip list", "shows the kernel interfaces, as configured and as they run", Effect::Reads,
     list<ipTable>},
    {"network ip route list", "shows the default gateways", Effect::Reads, list<routeTable>},
    {"network dns list", "shows host name, domain, name servers and search domains", Effect::Reads,
     list<dnsTable>},
    {"network nic list", "shows the physical adapters", Effect::Reads, list<adapterTable>},
    {"network vswitch standard list", "shows the standard switches and their port groups",
     Effect::Reads, list<switchTable>},
    {"network vswitch standard add -v SWITCH", "makes a standard switch", Effect::Changes,
     addSwitch},
    {"network vswitch standard remove -v SWITCH", "takes a switch without interfaces away",
     Effect::Changes, removeSwitch},
    {"network vswitch standard uplink add -u UPLINK -v SWITCH",
     "gives a switch a physical adapter that no other has", Effect::Changes, addUplink},
    {"network vswitch standard uplink remove -u UPLINK -v SWITCH", "takes it away again",
     Effect::Changes, removeUplink},
    {"network vswitch standard portgroup add -p PORTGROUP -v SWITCH",
     "makes a group of ports on a switch", Effect::Changes, addPortGroup},
    {"network vswitch standard portgroup remove -p PORTGROUP -v SWITCH",
     "takes one without interfaces away", Effect::Changes, removePortGroup},
    {"network vswitch standard portgroup set -p PORTGROUP -v SWITCH -i VLAN",
     "sets its VLAN; 0 for none, 4095 for all", Effect::Changes, setPortGroupVlan},
    {"network vswitch distributed list", "shows the distributed switches and their ports",
     Effect::Reads, list<distributedSwitchTable>},
    {"network restore", "puts the network back to that of a fresh host", Effect::Changes,
     restoreNetwork},
    {"system settings advanced set -o PATH -i NUMBER", "sets an advanced option", Effect::Changes,
     setNumber},
    {"system settings advanced set -o PATH -s TEXT",
     "sets an advanced option that is a text; none is now", Effect::Changes, setText},
    {"system settings advanced list [-o PATH]",
     "shows the advanced options, their ranges and what they do", Effect::Reads, listOptions},
}};

/// A change of the network may wait for another one, settle, fail, and be put back.
constexpr int kSecondsOfAChange = 120;

/// Callers show what comes on standard output, so that is where a failure is told.
ToolAnswer halocli(ToolHost& host, Commands<ToolHost> commands, const std::string& name,
                   Arguments arguments) try {
  return runCommand(host, commands, name, arguments);
} catch (const std::exception& error) {
  return {1, name + ": " + error.what() + "\n", ""};
}

constexpr std::array<Command<ToolHost>, 1> kValue = {{
    {"-q -g PATH", "prints an advanced option's value, nothing else", Effect::Reads,
     [](ToolHost& host, const Call& call) {
       return ToolAnswer{0, valueOn(host, optionAt(call["-g"])) + "\n", ""};
     }},
}};

}  // namespace

constinit const Tool<ToolHost> kHalocli = {"/bin/halocli /sbin/halocli /sbin/localcli",
                                           "Shows and changes the host's settings.\n",
                                           kSecondsOfAChange, kCommands, halocli};

constinit const Tool<ToolHost> kHalocfgAdvcfg = {"/sbin/halocfg-advcfg",
                                                 "Reads the host's settings.\n", 60, kValue};

}  // namespace HostTools
