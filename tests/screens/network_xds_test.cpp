// SPDX-License-Identifier: MIT
// The repair of the management network's port on a distributed switch.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

const Lines kWindow = kLogIn + Lines{"choose:Network Restore Options", "choose:Restore xDS"};
const std::string kForm = "All other properties will be taken", kUnable = "Check logs for details.",
                  kWarning = "wait:xDS Uplinks: Warning", kList = "wait:Select the xDS Uplinks";
const char* const kNoInterface = "Could not get a suitable management interface";
const Lines kOpen = kWindow + Lines{"wait:" + kForm};

/// tarn0 on a blocked port, beside another interface's.
DemoHost xdsHost() {
  DemoHost host;
  host.Set("/network/distributedSwitches", Json::parse(R"([
      {"name": "xds0", "uplinks": ["pnic1", "pnic3"], "ports": [
        {"name": "7", "nic": "tarn0", "vlanId": 9, "blocked": true},
        {"name": "host-local-1", "nic": "tarn1", "uplinks": ["pnic3"]},
        {"name": "nhost-local-22", "nic": "tarn2", "uplinks": ["pnic1"]}]},
      {"name": "xds1", "uplinks": [], "ports": [{"name": "host-local-0"}]}])"));
  host.Set("/network/kernelNics/0/connection",
           {{"type", "distributed"}, {"switch", "xds0"}, {"portGroup", "7"}});
  return host;
}

const Lines kTold =
    marked(announced("xds.restored", "Restoring xDS xds0")) + "- Moving tarn0 to port host-local-2";

TEST(RestoreXds, MakesThePortThatWasAskedFor) {
  const Lines select = parts("type:20;Down;Down;type: ;Enter");
  const auto with = [&](const std::string& keys) { return select + kList + parts(keys); };
  const std::pair<Lines, std::string> cases[] = {
      {parts("type:1;Enter"), "1 unblocked pnic1 pnic3"},
      {parts("type:x4094;Down;type: d;Up;Enter"), "4094 as-before pnic1 pnic3"},
      {with("Down;type: ;Enter"), "20 unblocked pnic1"},
      {with("Enter") + kWarning + "wait:One or more of the selected adapters" + "Enter",
       "20 unblocked pnic1 pnic3"},
      {with("type: ;Enter") + kWarning + "Esc" + kList + "type: " + "Down" + "type: " + "Enter",
       "20 unblocked pnic1"},
      {with("type: ;Down;type: ;Enter") + kWarning + "wait:No uplinks were" + "type:y" + "Enter",
       "20 unblocked"},
      {with("Down;type: ;Esc") + std::string("wait:" + kForm) + "Enter" + kList + "Down" +
           "wait:[X] pnic3" + "Esc" + "type: " + "Enter",
       "20 unblocked pnic1 pnic3"}};
  for (const auto& [keys, call] : cases) {
    SCOPED_TRACE(testing::PrintToString(keys));
    Demo demo(kQuickEscape, xdsHost());
    demo.Do(kOpen);
    demo.NewLines();
    demo.Do(keys + "wait:Moved tarn0 to port host-local-2 on xds0");
    EXPECT_EQ(marked(demo.NewLines()), kTold + ("MoveToHostLocalPort tarn0 host-local-2 " + call) +
                                           "run\t/bin/hmx-cmd hmx-cmd -U root internalsvc/refresh");
    const Json port = demo.host.State()["network"]["distributedSwitches"][0]["ports"][2];
    EXPECT_EQ(port["name"], "host-local-2");
    EXPECT_EQ(port["blocked"], call.find("as-before") != call.npos);
    demo.Do({"Enter", "gone:" + kForm, "wait:<Enter> Restore"});
  }
}

TEST(RestoreXds, BadVlansAndEscapeChangeNothing) {
  Demo demo(kQuickEscape, xdsHost());
  demo.Do(kOpen);
  demo.NewLines();
  for (const std::string text : {"", "0", "4095", "65537", "99999999999"}) {
    const std::string end = text.substr(text.size() - std::min<std::size_t>(text.size(), 3));
    demo.Do(
        {"type:" + text, "Down", "Enter", "wait:Please enter a valid VLAN ID (1-4094).", "Esc"});
    demo.Do({"Enter", "gone:Please enter", "type:8", "wait:" + end + "8 ", "Esc", "gone:" + kForm});
    demo.Do({"Enter", "wait:" + kForm});
  }
  demo.Do(parts("type:5;Down;Down;type: ;Enter") + kList + "Down" + "type:d");
  demo.Do({"wait:Device Name: pnic3", "wait:xds0", "Enter", "Enter", kWarning, "Esc", kList});
  demo.Do({"Esc", "wait:[X] Select xDS", "wait:[ 5 ", "Esc", "gone:" + kForm});
  EXPECT_EQ(demo.NewLines(), Lines{});
}

TEST(RestoreXds, IsRefusedWhereThereIsNothingToRepairAlsoOnceTheFormIsOpen) {
  const std::string none = "No uplinks are configured on the host for this xDS.",
                    nowhere = "tarn0 is on no distributed switch";
  const std::tuple<Json, std::string, std::string> cases[] = {
      {networkWith(R"({"kernelNics/0/connection/type": "standard"})"), kUnable, nowhere},
      {networkWith(R"({"kernelNics": []})"), kUnable, kNoInterface},
      {networkWith(R"({"kernelNics/0/connection/switch": "gone"})"), kUnable,
       "Distributed switch gone: it does not exist"},
      {failing("GetDistributedSwitches", "mute"), kUnable, "mute"},
      {failing("UpdateManagementInterface", "mute"), kUnable, "mute"},
      {networkWith(R"({"distributedSwitches/0/thirdParty": true})"), "3rd party xDS.",
       "xds0 is managed by somebody else's software"},
      {networkWith(R"({"distributedSwitches/0/uplinks": []})"), none, none}};
  for (const auto& [changes, text, cause] : cases)
    for (const bool opened : {false, true}) {
      SCOPED_TRACE(changes.dump());
      Demo demo(kQuickEscape, xdsHost());
      demo.Do(opened ? kOpen + "type:5" : kLogIn + "choose:Network Restore Options");
      demo.host.Change(changes);
      demo.NewLines();
      demo.Do({opened ? "Enter" : "choose:Restore xDS", "wait:" + text});
      EXPECT_EQ(demo.Look().Shows("[ ] Sel"), opened);
      EXPECT_EQ(demo.NewLines(), Lines{"log.err\t" + cause});
      demo.Do({"Enter", "gone:" + text, opened ? "wait:[ 5 " : "wait:<Enter> Restore"});
    }
}

TEST(RestoreXds, AHostThatRefusesIsToldOf) {
  const std::pair<Json, Lines> cases[] = {
      {failing("MoveToHostLocalPort", "no"), {"! no"}},
      {networkWith(R"({"distributedSwitches/0/uplinks": ["pnic1"]})"),
       {"MoveToHostLocalPort tarn0 host-local-2 5 unblocked pnic1 pnic3",
        "! The distributed switch xds0 has no uplink pnic3."}}};
  for (const auto& [changes, lines] : cases) {
    Demo demo(kQuickEscape, xdsHost());
    demo.Do(kOpen + parts("type:5;Down;Down;type: ;Enter") + kList);
    demo.host.Change(changes);
    demo.NewLines();
    demo.Do({"Enter", kWarning, "Enter", "wait:" + kUnable});
    EXPECT_EQ(marked(demo.NewLines()), kTold + lines);
    demo.Do({"Enter", "gone:" + kUnable, "wait:[X] Select xDS", "wait:[ 5 "});
  }
}

}  // namespace
