// SPDX-License-Identifier: MIT
// The forms of the network restore options that make a switch or a port group, or move a NIC.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

const std::string kSwitchForm = "Create Standard Switch", kGroupForm = "Create Port Group",
                  kMoveForm = "Migrate Tarn NIC";
const std::string kTools = "halocli network vswitch standard ";
const char *const kDone = "Operation Succeeded", *const kFailed = "Operation Failed",
                  *const kInvalid = "Invalid Argument";
const Lines kCheckLog = {kFailed, "Please check the syslog"};

Lines open(const std::string& form) {
  return kLogIn + Lines{"choose:Network Restore Options", "wait:Create Standard Switch",
                        "choose:" + form, "wait:<D> View Details"};
}

Lines ran(const std::string& words) {
  return {"run\t/bin/halocli " + kTools + words,
          "log.info\tCommand \"" + kTools + words + "\" succeeded"};
}

Lines refused(const std::string& words, const std::string& answer) {
  return {ran(words)[0],
          "log.err\tCommand \"" + kTools + words + "\" failed (rc=1): halocli: " + answer + "\\n"};
}

/// What an operator does in a form on a host, which may change once the form is open, or (null) let
/// nobody change it any more.
struct Use {
  Lines keys, lines, shows;
  Json host = Json::object(), late = Json::object();
};

void check(const std::string& form, const Use& use) {
  SCOPED_TRACE(testing::PrintToString(use.keys) + use.host.dump() + use.late.dump());
  Demo demo(use.host, kQuickEscape);
  demo.Do(open(form));
  demo.NewLines();
  use.late.is_null() ? demo.host.Freeze() : demo.host.Change(use.late);
  demo.Do(use.keys + "wait:<Enter> OK");
  EXPECT_EQ(demo.NewLines(), use.lines);
  EXPECT_EQ(missingFrom(demo.Look(), use.shows), Lines{}) << demo.Look().Dump();
  demo.Do({"Esc", "wait:" + use.shows.front(), "Enter"});
  if (use.shows.front() != kDone) demo.Do({"gone:" + use.shows.front(), "wait:<D> View", "Esc"});
  demo.Do({"gone:<D> View Details", "wait:Network Restore Options"});
  EXPECT_EQ(demo.NewLines(), Lines{});
}

const Json kNoSwitches = networkWith(R"({"switches": []})");
const Json kMute = failing("GetVirtualSwitches", "mute");
const Lines kMuteLine = {"log.err\tmute"};

/// A name that is refused, stays to be put right, and is refused again.
Use refusedName(const std::string& name) {
  return {{"type:" + name, "Enter", "wait:Please enter a valid", "Enter",
           "gone:Please enter a valid", "wait:[ " + name.substr(0, 6), "Enter"},
          {},
          {kInvalid, "Please enter a valid"}};
}

TEST(NetworkRepair, MakesASwitchOrTakesItBack) {
  const auto told = [](const std::string& name) {
    return announced("standard.switch.created", "Creating standard switch " + name);
  };
  const auto exists = [](const std::string& name, const std::string& kind) {
    return refused("add -v " + name, "There is a " + kind + " " + name + " already.");
  };
  const Json used = networkWith(R"({"switches/1/uplinks": ["pnic2", "pnic1"]})"),
             gone = Json::parse(R"([{"op": "remove", "path": "/network/pnics/1"}])"),
             noneFree = networkWith(R"({"switches/0/uplinks": ["pnic0", "pnic1", "pnic3"]})"),
             noPnics = networkWith(R"({"pnics": []})"),
             distributed = networkWith(R"({"distributedSwitches": [
                 {"name": "dvs0", "uplinks": ["pnic1"], "ports": []}]})");
  const std::string upWords = "uplink add -u pnic1 -v new", to = "/bin/" + kTools;
  const Json no = {{"status", 1}, {"stdout", "halocli: no\n"}};
  const Lines made = told("new") + ran("add -v new"), both = made + ran(upWords),
              back = made + refused(upWords, "There is no physical adapter pnic1.") +
                     "log.info\tRemoving standard switch new" + ran("remove -v new"),
              half = made + refused(upWords, "no") + "log.info\tRemoving standard switch new" +
                     refused("remove -v new", "no"),
              same = told("tarn0") + exists("tarn0", "kernel interface"),
              mute =
                  kMuteLine + kMuteLine + told("vSwitch1") + exists("vSwitch1", "standard switch");
  const Lines inUse = {kInvalid, "Uplink is already in use"}, enter = {"type:new", "Enter"},
              success = {kDone, "Successfully created standard virtual switch: new"};
  const Use uses[] = {
      {enter, both, success},
      {{"type:new\nor", "wait:switch: new "}, both, success},
      {parts("type:new;Down;Right;wait:< pnic3 >;Right;wait:< None >;type:dd;Enter"), made,
       success},
      {enter, made, success, noneFree},
      {parts("type:new;Down;Right;wait:< pnic0 >;Enter"), {}, inUse, noneFree},
      {parts("type:new;Down;Right;wait:< None >;Enter"), made, success, noPnics},
      {enter, {}, inUse, {}, used},
      {enter, {}, inUse, {}, distributed},
      {enter, back, kCheckLog + "There is no physical adapter pnic1.", {}, gone},
      {enter, half, kCheckLog + "Removing standard switch new failed: halocli: no",
       rehearsed({{to + "uplink add", no}, {to + "remove", no}})},
      {{"type:tarn0", "Enter"}, same, kCheckLog + "There is a kernel interface tarn0"},
      {{"type:vSwitch1", "Enter"}, mute, kCheckLog, {}, kMute}};
  for (const Use& use : uses) check(kSwitchForm, use);
  for (const std::string name : {"", "vSwitch1", "a b"}) check(kSwitchForm, refusedName(name));
}

TEST(NetworkRepair, MakesAPortGroup) {
  const auto told = [](const std::string& text) {
    return announced("port.group.created", "Creating port group " + text);
  };
  const std::string add = "portgroup add -p ", named = "Successfully created portgroup: ";
  const Lines braces = told("Lab {x} on vSwitch0") + ran(add + "Lab {x} -v vSwitch0"),
              second = told("dD on vSwitch1") + ran(add + "dD -v vSwitch1"),
              lost = told("new on vSwitch0") +
                     refused(add + "new -v vSwitch0", "There is no standard switch vSwitch0."),
              details = parts(
                  "type:dD;wait:[ dD ;Down;Right;Right;Left;wait:< vSwitch1 >;type:d;"
                  "wait:Storage, Backup;Enter;type:D;wait:Switch Details;Enter;Enter"),
              noSwitch = {kInvalid, "valid standard switch name"}, enter = {"type:new", "Enter"};
  const Use uses[] = {{{"type:Lab {x}", "Enter"}, braces, {kDone, named + "Lab (x)"}},
                      {details, second, {kDone, named + "dD"}},
                      {{"type:new", "Down", "Enter"}, {}, noSwitch, kNoSwitches},
                      {enter, kMuteLine, noSwitch, kMute},
                      {enter, lost, kCheckLog + "no standard switch vSwitch0.", {}, kNoSwitches}};
  for (const Use& use : uses) check(kGroupForm, use);
  for (const std::string& name : Lines{"", "Backup", "b ", std::string(300, 'x')})
    check(kGroupForm, refusedName(name));
}

TEST(NetworkRepair, WhatHasNoRoomEndsInDots) {
  Json host = DemoHost().State();
  Json& second = host["network"]["switches"][1];
  for (int i = 0; i < 30; ++i)
    second["portGroups"].push_back({{"name", "Port Group " + std::to_string(i)}, {"vlanId", 0}});
  second["name"] = std::string(90, 'v');
  Json& ipv6 = host["network"]["kernelNics"][0]["running"]["ipv6"]["networks"];
  for (int i = 0; i < 8; ++i)
    ipv6.push_back(
        {{"address", "2001:db8::" + std::to_string(i)}, {"prefix", 64}, {"type", "static"}});
  Demo demo(host, kQuickEscape);
  demo.Do(open(kGroupForm) +
          parts("Down;Right;wait:vv(...) >;type:d;wait:Name: vvvv;wait:23, P(...)"));
  demo.Do(parts("Enter;Esc;gone:<D> View") +
          Lines{"choose:" + kMoveForm, "type:d", "wait:NIC Details", "wait:/64(...)"});
}

const std::string kShell = "run\t/bin/sh sh -c ", kAgent = "/etc/init.d/ovl-opsagent ";
const std::string kVersion =
    "let v=`halocli --formatter=keyvalue software pak get -n ovl-opsagent | awk '/Version/{ "
    "split($0, kv, \"=\"); split(kv[2], ver, \".\"); print ver[1] }'`; (exit $((v < 3)))";
const Lines kAsked = {"log.info\tRunning: " + kAgent + "status", kShell + kAgent + "status"};
const Lines kAbsent = kAsked + "log.info\tovl-opsagent is not present on the system.";
const Lines kPresent = kAsked + Lines{"log.info\tovl-opsagent is present on the system.",
                                      "log.info\tRunning: " + kVersion, kShell + kVersion};
const Lines kStop = {"log.info\tovl-opsagent version >= 3 detected",
                     "log.info\tStopping ovl-opsagent.", kShell + kAgent + "stop"};
const Lines kStopped = kPresent + kStop + "log.info\tovl-opsagent has been successfully stopped.";
const Lines kSkipped = {"log.info\tSkipping ovl-opsagent start."};
const Lines kStarted = {"log.info\tStarting ovl-opsagent.", kShell + kAgent + "start",
                        "log.info\tovl-opsagent has been successfully started."};

const Json kRunning = {{"services", {{"ovl-opsagent", {{"running", true}, {"enabled", true}}}}}};

Json with(Json host, const Json& changes) {
  host.merge_patch(changes);
  return host;
}

/// A sample host with a second NIC, which is on an opaque network.
Json opaque(const Json& changes) {
  Json network = DemoHost().State()["network"];
  Json nic = network["kernelNics"][0];
  nic.merge_patch({{"name", "tarn1"}, {"management", false}, {"defaultRoute", false}});
  nic["connection"] = {{"type", "opaque"}, {"switch", "overlay"}, {"portGroup", ""}};
  network["kernelNics"].insert(network["kernelNics"].begin(), nic);
  return with({{"network", network}}, changes);
}

TEST(NetworkRepair, MovesANic) {
  const auto told = [](const std::string& nic) {
    return announced("tarnnic.migrated", "Migrating " + nic + " to Storage on vSwitch1");
  };
  const std::string tool = "/usr/lib64/corvo/ovl-opsagent/bin/ovlcfg-vswitch",
                    over = tool + " -m -p tarn1 -I vSwitch1",
                    noNic = "There is no kernel interface tarn0.",
                    isOpaque = "The kernel interface tarn1 is on an opaque network.",
                    ended = "Command \"" + over + "\" ";
  const Lines go = parts("Down;Right;Right;wait:< Storage/vSwitch1 >;Enter"),
              goSecond = parts("wait:< tarn0 >;Right;wait:< tarn1 >") + go,
              move = {"hostctl\tMigrate tarn0 vSwitch1 Storage"},
              move1 = {"hostctl\tMigrate tarn1 vSwitch1 Storage"},
              alone = told("tarn0") + kAbsent + move, beside = told("tarn0") + kStopped,
              handed = told("tarn1") + kStopped + ("run\t" + tool + " " + over);
  const Lines success = {kDone, "Migrated tarn0 to Storage on vSwitch1"},
              choose = {kInvalid, "Please choose which Tarn NIC should be migrated"};
  const Lines tookOver = handed + ("log.info\t" + ended + "succeeded") + move1 + kStarted,
              kept = handed + ("log.err\t" + ended + "failed (rc=1): (stdout=, stderr=busy)") +
                     "log.err\tMoving tarn1: the network overlay does not hand it over" + kStarted,
              frozen = told("tarn0") + kPresent + kStop + "log.err\tFailed to stop ovl-opsagent." +
                       move + "log.err\tHOST/host.json.lock: Is a directory" + kSkipped,
              left = told("tarn1") + kAbsent + move1 + ("log.err\t" + isOpaque) + kSkipped;
  const Json fails = with(kRunning, failing("Migrate", "no {room}")),
             nobody = {{"network", {{"kernelNics", Json::array()}}}},
             old = with(kRunning, {{"packages", {{"ovl-opsagent", "2.9"}}}}),
             busy = with(kRunning, rehearsed({{tool, {{"status", 1}, {"stderr", "busy"}}}}));
  const Use uses[] = {
      {go, alone + kSkipped, success},
      {go, told("tarn0") + kPresent + move + kSkipped, success, old},
      {go, beside + move + kStarted, success, kRunning},
      {go, beside + "log.err\tno {room}" + kStarted, kCheckLog + "no (room)", fails},
      {go, alone + ("log.err\t" + noNic) + kSkipped, kCheckLog + noNic, {}, nobody},
      {go, frozen, {kFailed, "Is a directory"}, kRunning, nullptr},
      {goSecond, left, {kFailed, "on an opaque"}, opaque(Json::object())},
      {goSecond, tookOver, {kDone, "Migrated tarn1"}, opaque(kRunning)},
      {goSecond, kept, {kFailed, "does not hand it"}, opaque(busy)},
      {{"type:dD", "Enter"}, {}, choose, nobody},
      {{"Enter"}, {}, choose, kNoSwitches},
      {{"Enter"}, {}, choose, failing("GetTarnNics", "mute")}};
  for (const Use& use : uses) check(kMoveForm, use);
}

TEST(NetworkRepair, ANicStaysWhereItIsUnlessItIsToldOtherwise) {
  Demo demo(opaque(Json::object()), kQuickEscape);
  demo.Do(open(kMoveForm));
  demo.NewLines();
  demo.Do(parts(
      "wait:< Management Network/vSwitch0 >;type:d;wait:10.20.30.40;Enter;Down;Right;Right;type:D;"
      "wait:Standard Switch Details;wait:pnic2;Enter;Up;Right;wait:< Storage/vSwitch1 >;"
      "Right;wait:< Management Network/vSwitch0 >;Enter;gone:<D> View Details"));
  EXPECT_EQ(demo.NewLines(), Lines{});
}

}  // namespace
