// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "sample/sample_tool_host.h"
#include "tests/values/on_sample_host.h"

namespace {

using HostSample::Step;
using Json = nlohmann::json;

/// Its management interface is on a distributed switch.
const char* const kChanges = R"([
  {"op": "add", "path": "/network/distributedSwitches", "value": [
    {"name": "xds0", "uplinks": ["pnic1"], "ports": [
      {"name": "mgmt", "nic": "tarn0", "vlanId": 30, "blocked": true},
      {"name": "host-local-0"}]}]},
  {"op": "replace", "path": "/network/kernelNics/0/connection", "value":
    {"type": "distributed", "switch": "xds0", "portGroup": "mgmt"}}])";

class SampleRepair : public HostSample::OnSampleHost {
 protected:
  SampleRepair() : OnSampleHost(Json::parse(kChanges)) {}

  Json Network() const { return host.State()["network"]; }

  /// Where the interface is, its address; uplinks and ports of the distributed switch.
  std::string Place() const {
    const Json network = Network(), &nic = network["kernelNics"][0];
    std::string text;
    for (const char* key : {"type", "switch", "portGroup"})
      text += nic["connection"][key].get<std::string>() + " ";
    const Json& on = network["distributedSwitches"][0];
    return text + nic["running"]["ipv4"].value("address", "no address") + on["uplinks"].dump() +
           on["ports"].dump();
  }
};

TEST_F(SampleRepair, MovesTheInterfaceAndUplinks) {
  const std::string left = R"({"name":"host-local-0"})", leased = " 10.20.30.40",
                    away = "standard vSwitch1 Backup" + leased;
  const auto onPort = [&](const std::string& port, const std::string& properties) {
    return "distributed xds0 " + port + leased + R"(["pnic1"][)" + left + R"(,{"blocked":)" +
           properties + "}]";
  };
  const Step steps[] = {
      {[] {
         Nic()->MoveToHostLocalPort({"host-local-1", 20, false, {"pnic1"}});
       },
       onPort("host-local-1",
              R"(true,"name":"host-local-1","nic":"tarn0","uplinks":["pnic1"],"vlanId":20)")},
      {[] {
         Nic()->MoveToHostLocalPort({"host-local-2", 4094, true, {}});
       },
       onPort("host-local-2",
              R"(false,"name":"host-local-2","nic":"tarn0","uplinks":[],"vlanId":4094)")},
      {[] { Nic()->Migrate("vSwitch1", "Backup"); }, away + R"(["pnic1"][)" + left + "]"},
      {[] {
         Writer().AddDistributedUplink("xds0", "pnic3");
         Writer().RemoveDistributedUplink("xds0", "pnic1");
         Writer().AddDistributedUplink("xds0", "pnic1");
       },
       away + R"(["pnic1","pnic3"][)" + left + "]"}};
  for (const auto& [change, expected] : steps) {
    change();
    EXPECT_EQ(Place(), expected);
  }
}

TEST_F(SampleRepair, RefusesWithTheHostAsItWas) {
  const auto port = [](const char* name, std::int16_t vlanId, const char* uplink) {
    return [=] { Nic()->MoveToHostLocalPort({name, vlanId, true, {uplink}}); };
  };
  const std::string vlan = "The VLAN of a port is a number from 1 to 4094.";
  ExpectSame(
      {{port("host-local-0", 1, "pnic1"), "There is a port host-local-0 of xds0 already."},
       {port("host-local-1", 0, "pnic1"), vlan},
       {port("host-local-1", 4095, "pnic1"), vlan},
       {port("host-local-1", 1, "pnic0"), "The distributed switch xds0 has no uplink pnic0."},
       {[] { Writer().AddUplink("vSwitch0", "pnic1"); },
        "The physical adapter pnic1 is an uplink of xds0 already."},
       {[] { Writer().AddDistributedUplink("xds0", "pnic0"); },
        "The physical adapter pnic0 is an uplink of vSwitch0 already."},
       {[&] { HostSample::SampleToolHost(host.Directory()).AddStandardSwitch("xds0"); },
        "There is a distributed switch xds0 already."},
       {[] { Writer().AddDistributedUplink("xds0", "pnic1"); }, ""},
       {[] { Writer().RemoveDistributedUplink("xds0", "pnic3"); }, ""},
       {[] { Writer().DisableNetDumper(); }, ""}});
  Nic()->Migrate("vSwitch0", "VM Network");
  ExpectSame({{[] { Nic()->Migrate("vSwitch0", "VM Network"); }, ""},
              {port("host-local-1", 1, "pnic1"),
               "The kernel interface tarn0 is on no distributed switch."}});
  host.Set("/network/kernelNics/0/connection/type", "opaque");
  ExpectSame({{[] { Nic()->Migrate("vSwitch0", "VM Network"); },
               "The kernel interface tarn0 is on an opaque network."}});
}

TEST_F(SampleRepair, ClearsTheNetworkAndBuildsThatOfAFreshHost) {
  const std::string left = R"( 10.20.30.40["pnic1"][{"name":"host-local-0"}])";
  host.Set("/network/netDumper", true);
  host.Set("/network/ipv6Enabled", false);
  host.Set("/network/pnics/0/linkUp", false);
  Json before = Network();
  before.merge_patch(Json::parse(R"({"netDumper": false, "ipv6EnabledAtStart": true,
      "switches": [], "dns": {"nameServers": [], "searchDomains": []},
      "routing": {"ipv4Gateway": "0.0.0.0", "ipv6Gateway": "::"}})"));
  TarnCtl::Network::NetworkInfoImpl network;
  network.DisableNetDumper();
  network.ClearNetworkConfig();
  EXPECT_EQ(Place(), R"(unknown   no address["pnic1"][{"name":"host-local-0"}])");
  Json cleared = Network();
  for (const char* seen : {"kernelNics", "distributedSwitches"}) cleared[seen] = before[seen];
  EXPECT_EQ(cleared, before);

  network.AutoConfigNetwork();
  EXPECT_EQ(Place(), "standard vSwitch0 Management Network" + left);
  EXPECT_EQ(Nic()->GetMacAddress(), "9e:3e:41:55:0c:10") << "of the first with link";
  const Json built = Network();
  EXPECT_EQ(built["switches"], Json::parse(R"([{"name": "vSwitch0", "uplinks": ["pnic2"],
                             "portGroups": [{"name": "Management Network", "vlanId": 0}]}])"));
  EXPECT_EQ(built["routing"]["ipv4Gateway"], "10.20.30.1");
  EXPECT_EQ(built["dns"]["nameServers"], Json::parse(R"(["10.20.30.2"])"));
  ExpectSame({{[&] { network.AutoConfigNetwork(); }, ""}});

  host.Set("/network/kernelNics", Json::array());
  network.AutoConfigNetwork();
  EXPECT_TRUE(Nic()->GetIpConfig().GetIpv4UseDhcp()) << "though nothing is offered";
  host.Set("/network/pnics", Json::array());
  ExpectSame({{[&] { network.AutoConfigNetwork(); }, "This host has no physical adapter to use."}});
}

}  // namespace
