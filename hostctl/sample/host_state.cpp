// SPDX-License-Identifier: MIT
#include "sample/host_state.h"

#include <algorithm>
#include <limits>

#include "sample/json_read.h"
#include "sample/network_state.h"

namespace HostSample {

namespace {

using namespace HostCtl::System;

constexpr long long kLargest = std::numeric_limits<long long>::max();

int readSmall(const JsonNode& node, int least, int most) {
  return static_cast<int>(node.Number(least, most));
}

VersionRecord readVersion(const JsonNode& node) {
  return {node["productName"].Text(), node["version"].Text(), node["kernelVersion"].Text(),
          static_cast<unsigned>(node["buildNumber"].Number(0, 0xffffffffLL))};
}

BiosData readBios(const JsonNode& node) {
  return {node["vendor"].Text(),
          node["version"].Text(),
          node["releaseDate"].Text(),
          node["assetTag"].Text(),
          readSmall(node["majorVersion"], 0, 255),
          readSmall(node["minorVersion"], 0, 255)};
}

HardwareRecord readHardware(const JsonNode& node) {
  return {node["vendorName"].Text(), node["productName"].Text(), node["serialNumber"].Text(),
          node["serviceTag"].Text(), node["bmcVersion"].Text(),  readBios(node["bios"])};
}

MemoryRecord readMemory(const JsonNode& node) {
  return {static_cast<std::uint64_t>(node["totalPages"].Number(0, 1LL << 44)),
          static_cast<std::uint64_t>(node["pageSize"].Number(1, 1LL << 30))};
}

StorageAdapter readAdapter(const JsonNode& node) {
  return {node["name"].Text(), node["driverName"].Text()};
}

HostCtl::Adv::OptionValue readOption(const JsonNode& node) {
  if (node.IsText()) return node.Text();
  return static_cast<std::int64_t>(node.Number(-kLargest, kLargest));
}

FirewallRuleset readRuleset(const JsonNode& node) {
  return {node["id"].Text(), node["enabled"].Flag()};
}

HostCtl::Authentication::SmartCardSlot readSlot(const JsonNode& node) {
  HostCtl::Authentication::SmartCardSlot slot{node["name"].Text(), std::nullopt};
  if (const auto token = node.Find("token"))
    slot.token = {(*token)["label"].Text(), (*token)["userId"].Text()};
  return slot;
}

Account readAccount(const JsonNode& node) {
  const auto pin = node.Find("pin");
  return {node["name"].Text(), node["password"].Text(),
          pin ? std::optional(pin->Text()) : std::nullopt, node["permission"].Flag(),
          node["expired"].Flag()};
}

Machine readMachine(const JsonNode& node) {
  const auto autostart = node.Find("autostart");
  return {node["name"].Text(), node["running"].Flag(),
          autostart ? std::optional(readSmall(*autostart, 1, 100000)) : std::nullopt};
}

HostSeam::HostKey readHostKey(const JsonNode& node) {
  return {readSmall(node["bits"], 1, 65536), node["fingerprint"].Text(), node["comment"].Text(),
          node["type"].Text()};
}

Rehearsal readTool(const JsonNode& node) {
  const auto text = [&](const char* key) {
    const auto found = node.Find(key);
    return found ? found->Text() : std::string();
  };
  Rehearsal tool;
  if (const auto missing = node.Find("missing")) tool.missing = missing->Flag();
  if (const auto signal = node.Find("signal")) tool.signal = readSmall(*signal, 1, 64);
  if (const auto seconds = node.Find("seconds")) tool.seconds = readSmall(*seconds, 0, 86400);
  const bool answers = !tool.missing && tool.signal == 0;
  tool.answer = {answers ? readSmall(node["status"], 0, 255) : 0, text("stdout"), text("stderr")};
  return tool;
}

void readIdentity(const JsonNode& top, HostState& state) {
  state.version = readVersion(top["version"]);
  state.hardware = readHardware(top["hardware"]);
  state.processors = {top["processors"]["modelName"].Text(),
                      readSmall(top["processors"]["packages"], 1, 1024)};
  state.memory = readMemory(top["memory"]);
  state.adapters = readList(top["storage"]["adapters"], readAdapter);
  state.modules = readMap(top["storage"]["modules"], readText);
}

void readSettings(const JsonNode& top, HostState& state) {
  state.welcomeMessage = top["welcomeMessage"].Text();
  state.bootOption = readSmall(top["bootOption"], 0, 255);
  state.options = readMap(top["options"], readOption);
  state.keyboardLayouts = readList(top["keyboard"]["layouts"], readText);
  state.keyboardLayout = top["keyboard"]["current"].Text();
  state.rulesets = readList(top["firewallRulesets"], readRuleset);
  state.slots = readList(top["smartCardSlots"], readSlot);
}

void readAccess(const JsonNode& top, HostState& state) {
  state.lockdownEnabled = top["lockdown"]["enabled"].Flag();
  state.lockdownPossible = top["lockdown"]["possible"].Flag();
  state.accounts = readList(top["accounts"], readAccount);
  state.minimumPasswordLength = readSmall(top["minimumPasswordLength"], 0, 255);
  state.certificates = readMap(top["certificates"],
                               [](const JsonNode& digests) { return readMap(digests, readText); });
  state.hostKeys = readMap(top["sshHostKeys"], readHostKey);
}

constexpr Choices<Power, 3> kPowers = {
    {{"on", Power::On}, {"off", Power::Off}, {"restarting", Power::Restarting}}};

void readParts(const JsonNode& top, HostState& state) {
  if (const auto power = top.Find("power")) state.power = readChoice(*power, kPowers);
  state.servicesRunning =
      readMap(top["services"], [](const JsonNode& service) { return service["running"].Flag(); });
  state.packages = readMap(top["packages"], readText);
  state.machines = readList(top["machines"], readMachine);
}

void readRehearsals(const JsonNode& top, HostState& state) {
  if (const auto features = top.Find("features"))
    state.features = readMap(*features, [](const JsonNode& feature) { return feature.Flag(); });
  if (const auto reachable = top.Find("reachable"))
    state.reachable = readList(*reachable, readText);
  if (const auto resolvable = top.Find("resolvable"))
    state.resolvable = readList(*resolvable, readText);
  if (const auto seconds = top.Find("resolutionSeconds"))
    state.resolutionSeconds = readSmall(*seconds, 0, 86400);
  if (const auto alert = top.Find("systemAlert")) state.systemAlert = alert->Text();
  if (const auto status = top.Find("eventLibraryStatus"))
    state.eventLibraryStatus = readSmall(*status, -0x7fffffff, 0x7fffffff);
  if (const auto faults = top.Find("faults")) state.faults = readMap(*faults, readText);
  if (const auto tools = top.Find("tools")) state.tools = readMap(*tools, readTool);
}

}  // namespace

HostState readHostState(const Json& json) {
  const JsonNode top(json, "");
  HostState state;
  readIdentity(top, state);
  readNetworkState(top["network"], state);
  readSettings(top, state);
  readAccess(top, state);
  readParts(top, state);
  readRehearsals(top, state);
  return state;
}

std::string_view nameOf(Power power) {
  return kPowers.at(static_cast<std::size_t>(power)).first;
}

const Account* findAccount(const HostState& state, const std::string& name) {
  const auto found = std::find_if(state.accounts.begin(), state.accounts.end(),
                                  [&](const Account& account) { return account.name == name; });
  return found == state.accounts.end() ? nullptr : &*found;
}

bool acceptsSecret(const HostState& state, const Account& account, const std::string& secret) {
  if (secret == account.password) return true;
  const bool cardPresent = std::any_of(
      state.slots.begin(), state.slots.end(),
      [&](const auto& slot) { return slot.token && slot.token->userId == account.name; });
  return cardPresent && account.pin == secret;
}

}  // namespace HostSample
