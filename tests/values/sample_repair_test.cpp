// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>

#include "harness/demo_host.h"
#include "harness/hosts/machine.h"
#include "hostctl/lib/exception.h"
#include "hostseam/driver.h"
#include "hosttools/program.h"
#include "sample/sample_host.h"
#include "sample/sample_tool_host.h"
#include "tarnctl/network/network_info_impl.h"
#include "tarnctl/system/resource_info_impl.h"

namespace {

using HostCtl::Network::HostLocalPort;
using Json = nlohmann::json;
using Step = std::pair<std::function<void()>, std::string>;

/// Its management interface is on a distributed switch.
const char* const kChanges = R"([
  {"op": "add", "path": "/network/distributedSwitches", "value": [
    {"name": "xds0", "uplinks": ["pnic1"], "ports": [
      {"name": "mgmt", "nic": "tarn0", "vlanId": 30, "blocked": true},
      {"name": "host-local-0"}]}]},
  {"op": "replace", "path": "/network/kernelNics/0/connection", "value":
    {"type": "distributed", "switch": "xds0", "portGroup": "mgmt"}}])";

class SampleRepair : public testing::Test {
 protected:
  SampleRepair() : host(Json::parse(kChanges)) { HostSample::useSampleHost(host.Directory()); }

  static HostSeam::NetworkWriter& Writer() { return HostSeam::driver().Network(); }
  static std::unique_ptr<HostCtl::Network::TarnNic> Nic() {
    return std::move(TarnCtl::Network::NetworkInfoImpl().GetTarnNics().at(0));
  }

  Json Network() const { return host.State()["network"]; }

  void ExpectSame(const std::vector<Step>& steps) {
    const std::string before = host.Text();
    for (const auto& [change, failure] : steps) {
      EXPECT_EQ(HostLinux::failureOf(change), failure);
      EXPECT_EQ(host.Text(), before) << failure;
    }
  }

  /// Where the interface is, its address, and the distributed switches.
  std::string Place() const {
    const Json network = Network(), &nic = network["kernelNics"][0], &at = nic["connection"];
    std::string text = at["type"].get<std::string>() + " " + at["switch"].get<std::string>() + " " +
                       at["portGroup"].get<std::string>() + " " +
                       nic["running"]["ipv4"].value("address", "no address");
    for (const Json& one : network["distributedSwitches"]) {
      text += "|" + one["uplinks"].dump();
      for (const Json& port : one["ports"])
        text += " " + port["name"].get<std::string>() + " " + port.value("nic", "-") + " " +
                std::to_string(port.value("vlanId", 0)) +
                (port.value("blocked", false) ? " blocked" : "") +
                port.value("uplinks", Json()).dump();
    }
    return text;
  }

  Harness::DemoHost host;
};

TEST_F(SampleRepair, MovesTheInterfaceAndUplinks) {
  const std::string rest = R"(|["pnic1"] host-local-0 - 0null)", on = "distributed xds0 ",
                    leased = " 10.20.30.40";
  const HostLocalPort blocked{"host-local-1", 20, false, {"pnic1"}},
      open{"host-local-2", 4094, true, {}};
  const Step steps[] = {
      {[] {},
       on + "mgmt" + leased + R"(|["pnic1"] mgmt tarn0 30 blockednull host-local-0 - 0null)"},
      {[&] { Nic()->MoveToHostLocalPort(blocked); },
       on + "host-local-1" + leased + rest + R"( host-local-1 tarn0 20 blocked["pnic1"])"},
      {[&] { Nic()->MoveToHostLocalPort(open); },
       on + "host-local-2" + leased + rest + " host-local-2 tarn0 4094[]"},
      {[] { Nic()->Migrate("vSwitch1", "Backup"); }, "standard vSwitch1 Backup" + leased + rest},
      {[] { Writer().RemoveDistributedUplink("xds0", "pnic1"); },
       "standard vSwitch1 Backup" + leased + "|[] host-local-0 - 0null"},
      {[] { Writer().AddDistributedUplink("xds0", "pnic1"); },
       "standard vSwitch1 Backup" + leased + rest}};
  for (const auto& [change, expected] : steps) {
    change();
    EXPECT_EQ(Place(), expected);
  }
}

TEST_F(SampleRepair, RefusesWithTheHostAsItWas) {
  const auto port = [](const char* name, std::int16_t vlanId, const char* uplink) {
    return [=] { Nic()->MoveToHostLocalPort({name, vlanId, true, {uplink}}); };
  };
  const std::string vlan = "The VLAN of a port is a number from 1 to 4094.",
                    used = "The physical adapter pnic1 is an uplink of xds0 already.";
  ExpectSame(
      {{port("host-local-0", 1, "pnic1"), "There is a port host-local-0 of xds0 already."},
       {port("host-local-1", 0, "pnic1"), vlan},
       {port("host-local-1", 4095, "pnic1"), vlan},
       {port("host-local-1", 1, "pnic0"), "The distributed switch xds0 has no uplink pnic0."},
       {[] { Nic()->Migrate("vSwitch0", "Backup"); },
        "There is no port group of vSwitch0 named Backup."},
       {[] { Writer().AddUplink("vSwitch0", "pnic1"); }, used},
       {[] { Writer().AddDistributedUplink("xds0", "pnic0"); },
        "The physical adapter pnic0 is an uplink of vSwitch0 already."},
       {[] { Writer().AddDistributedUplink("xds0", "pnic9"); },
        "There is no physical adapter pnic9."},
       {[] { Writer().RemoveDistributedUplink("xds1", "pnic1"); },
        "There is no distributed switch xds1."},
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
  host.Set("/network/netDumper", true);
  host.Set("/network/ipv6Enabled", false);
  host.Set("/network/pnics/0/linkUp", false);
  const Json before = Network();
  TarnCtl::Network::NetworkInfoImpl network;
  network.DisableNetDumper();
  network.ClearNetworkConfig();
  Json expected = before;
  const char* const distributed = "/distributedSwitches/0/ports";
  expected.update(Json::parse(R"({"netDumper": false, "ipv6EnabledAtStart": true, "switches": [],
                                  "routing": {"ipv4Gateway": "0.0.0.0", "ipv6Gateway": "::"}})"));
  expected[Json::json_pointer(distributed)].erase(0);
  expected["dns"].update({{"nameServers", Json::array()}, {"searchDomains", Json::array()}});
  const Json cleared = Network();
  expected["kernelNics"] = cleared["kernelNics"];
  EXPECT_EQ(cleared, expected);
  EXPECT_EQ(Place(), R"(unknown   no address|["pnic1"] host-local-0 - 0null)");
  EXPECT_EQ(Nic()->GetMacAddress(), "");

  network.AutoConfigNetwork();
  EXPECT_EQ(Place(),
            R"(standard vSwitch0 Management Network 10.20.30.40|["pnic1"] host-local-0 - 0null)");
  EXPECT_EQ(Nic()->GetMacAddress(), before["pnics"][2]["macAddress"]) << "the first with link";
  const Json built = Network();
  EXPECT_EQ(built["switches"], Json::parse(R"([{"name": "vSwitch0", "uplinks": ["pnic2"],
                             "portGroups": [{"name": "Management Network", "vlanId": 0}]}])"));
  EXPECT_EQ(built["routing"]["ipv4Gateway"], "10.20.30.1");
  EXPECT_EQ(built["dns"]["nameServers"], Json::parse(R"(["10.20.30.2"])"));
  ExpectSame({{[&] { network.AutoConfigNetwork(); }, ""}});

  for (const char* list : {"kernelNics", "switches"})
    host.Set(std::string("/network/") + list, Json::array());
  network.AutoConfigNetwork();
  EXPECT_EQ(Nic()->GetInterfaceName(), "tarn0");
  EXPECT_TRUE(Nic()->GetIpConfig().GetIpv4UseDhcp()) << "though nothing is offered";
  host.Set("/network/pnics", Json::array());
  ExpectSame({{[&] { network.AutoConfigNetwork(); }, "This host has no physical adapter to use."}});
}

TEST_F(SampleRepair, PowersMachinesOff) {
  EXPECT_TRUE(TarnCtl::System::ResourceInfoImpl().HasRunningVirtualMachines());
  HostSample::SampleToolHost tools(host.Directory());
  EXPECT_EQ(HostTools::runTool(tools, "/sbin/powerOffVms", {"powerOffVms"}).status, 0);
  EXPECT_FALSE(TarnCtl::System::ResourceInfoImpl().HasRunningVirtualMachines());
}

}  // namespace
