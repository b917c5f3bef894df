// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>

#include "harness/demo_host.h"
#include "hostctl/lib/exception.h"
#include "hostseam/driver.h"
#include "sample/sample_host.h"
#include "tarnctl/network/network_info_impl.h"
#include "tarnctl/network/virtual_switch_info_impl.h"

namespace {

using namespace HostCtl::Network;
using HostSample::useSampleHost;
using Json = nlohmann::json;

const char* const kAllIpv6 =
    "dhcp ra 2001:db8:20::40/64 2001:db8:20::1:7f3a/128 2001:db8:20:0:9c3e:41ff:fe07:21a8/64 "
    "via 2001:db8:20::1";
const char* const kServers = "; 10.20.30.2 2001:db8:20::53";

Ipv4Address ipv4(const char* text) {
  return *Ipv4Address::FromString(text);
}

Ipv6Address ipv6(const char* text) {
  return *Ipv6Address::FromString(text);
}

class SampleNetwork : public testing::Test {
 protected:
  SampleNetwork() { useSampleHost(host.Directory()); }

  static std::unique_ptr<TarnNic> Nic() {
    TarnCtl::Network::NetworkInfoImpl network;
    return std::move(network.GetTarnNics().at(0));
  }

  static void Configure(const std::function<void(IpConfig&)>& change) {
    const auto nic = Nic();
    IpConfig config = nic->GetConfiguredIpConfig();
    change(config);
    nic->SetIpConfig(config);
  }

  static void MakeStatic(const char* address, const char* netmask = "255.255.255.0") {
    Configure([&](IpConfig& config) {
      config.SetUseDhcp(false);
      config.SetIpv4Address(ipv4(address));
      config.SetIpv4Netmask(ipv4(netmask));
    });
  }

  static void ToggleIpv6(bool enabled) {
    TarnCtl::Network::NetworkInfoImpl().SetTarnIpv6Enabled(enabled);
  }

  void GoDownAndStart() {
    host.Set("/power", "restarting");
    useSampleHost(host.Directory());
  }

  void Offer(const char* kind, const Json& what) {
    host.Set(std::string("/network/kernelNics/0/offers/") + kind, what);
  }

  /// What runs: IPv4; IPv6; name servers.
  static std::string Running() {
    const IpConfig config = Nic()->GetIpConfig();
    TarnCtl::Network::RoutingInfoImpl routing(kDefaultStack);
    std::string text = config.GetIpv4UseNone() ? "none" : config.GetIpv4UseDhcp() ? "dhcp" : "set";
    text += " " + config.GetIpv4Address().GetStringAddress() + "/" +
            std::to_string(config.GetIpv4Netmask().GetPrefix()) + " via " +
            routing.GetTarnDefaultGateway().GetStringAddress() + "; ";
    if (config.GetIpv6UseDhcp()) text += "dhcp ";
    if (config.GetIpv6UseRouterAdvertisement()) text += "ra ";
    for (const auto& network : config.GetIpv6Networks()) text += network.ToString() + " ";
    text += "via " + routing.GetTarnIpv6DefaultGateway().GetScopedAddress() + ";";
    for (const auto& server : TarnCtl::Network::DnsConfigImpl(kDefaultStack).GetNameServers())
      text += " " + toString(server);
    return text;
  }

  /// "switch[uplinks]{group vlan active|...} ..."
  static std::string Switches() {
    const auto listed = [](const std::vector<std::string>& names) {
      std::string text;
      for (const auto& name : names) text += (text.empty() ? "" : " ") + name;
      return text;
    };
    std::string text;
    for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches()) {
      text += one->GetName() + "[" + listed(one->GetUplinks()) + "]";
      for (const auto& group : one->GetPortGroups())
        text += " " + group->GetName() + " " + std::to_string(group->GetVlanId()) + "(" +
                listed(group->GetNicTeamingPolicy().GetActiveUplinks()) + ")";
      text += "|";
    }
    return text;
  }

  HostSeam::NetworkWriter& Writer() { return HostSeam::driver().Network(); }

  Harness::DemoHost host;
};

using Step = std::pair<std::function<void()>, std::string>;

TEST_F(SampleNetwork, FollowsWhatIsConfiguredAndOffered) {
  const std::string all = kAllIpv6, servers = kServers;
  const std::string noLease =
      "dhcp ra 2001:db8:20::40/64 "
      "2001:db8:20:0:9c3e:41ff:fe07:21a8/64 via 2001:db8:20::1";
  TarnCtl::Network::RoutingInfoImpl routing(kDefaultStack);
  const Step steps[] = {
      {[] {}, "dhcp 10.20.30.40/24 via 10.20.30.1; " + all + servers},
      {[] { Nic()->ReleaseLease(); }, "dhcp 0.0.0.0/0 via 0.0.0.0; " + noLease + servers},
      {[] { Nic()->RenewLease(LeaseRenewal::Ipv4); },
       "dhcp 10.20.30.40/24 via 10.20.30.1; " + noLease + "; 10.20.30.2"},
      {[] { Nic()->Disable(); },
       "dhcp 0.0.0.0/0 via 10.20.30.1; dhcp ra via 2001:db8:20::1; 10.20.30.2"},
      {[&] {
         host.Set("/faults", {{"Disable", "no"}});
         EXPECT_THROW(Nic()->Restart(), HostCtl::Lib::HostCtlException);
         host.Set("/faults", Json::object());
       },
       "dhcp 10.20.30.40/24 via 10.20.30.1; " + all + servers},
      {[] { MakeStatic("10.20.30.77"); },
       "set 10.20.30.77/24 via 0.0.0.0; " + all + "; 2001:db8:20::53"},
      {[&] { routing.SetTarnDefaultGateway(ipv4("10.20.30.9"), false); },
       "set 10.20.30.77/24 via 10.20.30.9; " + all + "; 2001:db8:20::53"},
      {[] { Nic()->Restart(); }, "set 10.20.30.77/24 via 10.20.30.9; " + all + "; 2001:db8:20::53"},
      {[&] { MakeStatic("10.20.30.78", "255.255.0.0"); },
       "set 10.20.30.78/16 via 10.20.30.9; " + all + "; 2001:db8:20::53"},
      {[&] { MakeStatic("172.16.0.9"); },
       "set 172.16.0.9/24 via 0.0.0.0; " + all + "; 2001:db8:20::53"},
      {[] { Configure([](IpConfig& config) { config.SetUseDhcp(false, true); }); },
       "none 0.0.0.0/0 via 0.0.0.0; " + all + "; 2001:db8:20::53"},
      {[&] {
         Offer("dhcp", nullptr);
         Configure([](IpConfig& config) { config.SetUseDhcp(true); });
       },
       "dhcp 0.0.0.0/0 via 0.0.0.0; " + all + "; 2001:db8:20::53"},
      {[&] {
         Offer("dhcp",
               {{"address", "10.9.9.9"}, {"netmask", "255.0.0.0"}, {"gateway", "10.0.0.1"}});
         Nic()->RenewLease(LeaseRenewal::Ipv4AndIpv6);
       },
       "dhcp 10.9.9.9/8 via 10.0.0.1; " + all + "; 2001:db8:20::53"},
      {[&] {
         Offer("dhcp", nullptr);
         Nic()->RenewLease(LeaseRenewal::Ipv4AndIpv6);
       },
       "dhcp 10.9.9.9/8 via 10.0.0.1; " + all + "; 2001:db8:20::53"},
      {[] {
         Configure([](IpConfig& config) {
           config.SetUseIpv6Dhcp(false);
           config.SetUseIpv6RouterAdvertised(false);
           config.SetIpv6Networks({*Ipv6Network::FromString("fd00::7/56")});
           config.SetDhcpDns(false);
         });
       },
       "dhcp 10.9.9.9/8 via 10.0.0.1; fd00::7/56 via ::; 2001:db8:20::53"},
      {[&] { routing.SetIpv6TarnDefaultGateway(ipv6("fe80::1%tarn0")); },
       "dhcp 10.9.9.9/8 via 10.0.0.1; fd00::7/56 via fe80::1%tarn0; 2001:db8:20::53"},
      {[] { Nic()->Restart(); },
       "dhcp 0.0.0.0/0 via 0.0.0.0; fd00::7/56 via fe80::1%tarn0; 2001:db8:20::53"},
      {[] { Configure([](IpConfig& config) { config.SetUseIpv6RouterAdvertised(true); }); },
       "dhcp 0.0.0.0/0 via 0.0.0.0; ra fd00::7/56 2001:db8:20:0:9c3e:41ff:fe07:21a8/64 via "
       "fe80::1%tarn0; 2001:db8:20::53"},
  };
  int number = 0;
  for (const auto& [change, expected] : steps) {
    change();
    EXPECT_EQ(Running(), expected) << "step " << number++;
  }
}

TEST_F(SampleNetwork, SwitchesIpv6AtTheNextStart) {
  TarnCtl::Network::NetworkInfoImpl network;
  const std::string ipv4Part = "dhcp 10.20.30.40/24 via 10.20.30.1; ";
  const struct {
    bool wanted;
    bool restart;
    bool enabled;
    std::string running;
  } steps[] = {{false, false, true, ipv4Part + kAllIpv6 + kServers},
               {true, true, true, ipv4Part + kAllIpv6 + kServers},
               {false, true, false, ipv4Part + "dhcp ra via ::; 10.20.30.2"},
               {true, true, true, ipv4Part + kAllIpv6 + kServers}};
  for (const auto& step : steps) {
    ToggleIpv6(step.wanted);
    Nic()->Disable();
    if (step.restart) {
      GoDownAndStart();
    } else {
      Nic()->Enable();
    }
    EXPECT_EQ(network.IsTarnIpv6Enabled(), step.enabled);
    EXPECT_EQ(Nic()->GetIpConfig().GetIpv6Enabled(), step.enabled);
    EXPECT_EQ(Running(), step.running);
  }
}

TEST_F(SampleNetwork, MovesUplinksAndTeams) {
  const HostSeam::PortGroupName management{"vSwitch0", "Management Network"};
  const Step steps[] = {
      {[&] { Writer().AddUplink("vSwitch0", "pnic2"); },
       "vSwitch0[pnic0 pnic2] Management Network 0(pnic0 pnic2) VM Network 0(pnic0 pnic2)|"
       "vSwitch1[] Storage 110() Backup 120()|"},
      {[&] {
         Writer().WriteActiveUplinks(management, {"pnic2", "pnic0"});
       },
       "vSwitch0[pnic0 pnic2] Management Network 0(pnic2 pnic0) VM Network 0(pnic0 pnic2)|"
       "vSwitch1[] Storage 110() Backup 120()|"},
      {[&] { Writer().AddUplink("vSwitch1", "pnic2"); },
       "vSwitch0[pnic0] Management Network 0(pnic0) VM Network 0(pnic0)|"
       "vSwitch1[pnic2] Storage 110(pnic2) Backup 120(pnic2)|"},
      {[&] { Writer().RemoveUplink("vSwitch0", "pnic0"); },
       "vSwitch0[] Management Network 0() VM Network 0()|"
       "vSwitch1[pnic2] Storage 110(pnic2) Backup 120(pnic2)|"},
      {[&] { Writer().WriteVlanId(management, 4095); },
       "vSwitch0[] Management Network 4095() VM Network 0()|"
       "vSwitch1[pnic2] Storage 110(pnic2) Backup 120(pnic2)|"}};
  for (const auto& [change, expected] : steps) {
    change();
    EXPECT_EQ(Switches(), expected);
  }
}

TEST_F(SampleNetwork, SavesNameResolutionAtOnce) {
  TarnCtl::Network::DnsConfigImpl dns(kDefaultStack);
  dns.SetFqdn("alpha", false, "corp.lan");
  dns.RemoveNameServers();
  dns.AddUserNameServer(ipv6("fe80::53%tarn0"));
  dns.AddUserNameServer(ipv4("10.0.0.53"));
  dns.SetSearchDomainsString("corp.lan");
  dns.AddUserSearchDomain("a.lan");
  const std::string before = host.Text();
  dns.Refresh();
  dns.SaveConfig();
  EXPECT_EQ(host.Text(), before) << "forgotten";
  dns.SetHostname("beta", false);
  dns.AddUserNameServer(ipv6("fe80::53%tarn0"));
  dns.SaveConfig();
  EXPECT_EQ(host.State()["network"]["dns"],
            Json::parse(R"({"hostname": "beta", "domain": "example.test",
                            "nameServers": ["10.20.30.2", "2001:db8:20::53", "fe80::53%tarn0"],
                            "searchDomains": ["example.test", "lab.example.test"]})"));
}

TEST_F(SampleNetwork, WritesNothingWhereNothingDiffers) {
  const std::function<void()> idle[] = {
      [] { ToggleIpv6(true); },
      [] { Configure([](IpConfig& config) { config.SetIpv4Gateway(ipv4("9.9.9.9")); }); },
      [] { Nic()->RenewLease(LeaseRenewal::Ipv4AndIpv6); },
      [] { Nic()->Enable(); },
      [&] { Writer().WriteMacAddress("tarn0", "9e:3e:41:07:21:a8"); },
      [&] { Writer().WriteIpv4Gateway(ipv4("10.20.30.1")); },
      [&] { Writer().WriteIpv6Gateway(ipv6("2001:db8:20::1")); },
      [&] {
        Writer().WriteDns({"halo-01", "example.test", {}, {}});
      },
      [&] { Writer().AddUplink("vSwitch0", "pnic0"); },
      [&] { Writer().RemoveUplink("vSwitch0", "pnic1"); },
      [&] {
        Writer().WriteActiveUplinks({"vSwitch1", "Backup"}, {"pnic2"});
      },
      [&] {
        Writer().WriteVlanId({"vSwitch1", "Backup"}, 120);
      }};
  const std::string before = host.Text();
  int number = 0;
  for (const auto& change : idle) {
    change();
    EXPECT_EQ(host.Text(), before) << "written, be it only in another layout, by " << number++;
  }
}

TEST_F(SampleNetwork, RefusesWithTheHostAsItWas) {
  const Step refusals[] = {
      {[&] { Writer().AddUplink("vSwitch9", "pnic1"); }, "There is no standard switch vSwitch9."},
      {[&] { Writer().AddUplink("vSwitch0", "pnic9"); }, "There is no physical adapter pnic9."},
      {[&] {
         Writer().WriteActiveUplinks({"vSwitch0", "VM Network"}, {"pnic2"});
       },
       "The standard switch vSwitch0 has no uplink pnic2."},
      {[&] {
         Writer().WriteVlanId({"vSwitch0", "Backup"}, 1);
       },
       "There is no port group of vSwitch0 named Backup."},
      {[&] {
         Writer().WriteVlanId({"vSwitch0", "VM Network"}, 4096);
       },
       "network.switches[0].portGroups[1].vlanId is not a whole number "
       "from 0 to 4095"},
      {[&] { Writer().WriteIpConfig("tarn9", {}); }, "There is no kernel interface tarn9."},
      {[&] { Writer().SetNicUp("tarn9", false); }, "There is no kernel interface tarn9."},
      {[&] { Writer().WriteMacAddress("tarn0", "9e:3e:41:07:21:g8"); },
       "\"9e:3e:41:07:21:g8\" is not a MAC address."},
      {[&] { Writer().WriteIpv4Gateway(ipv4("10.20.31.1")); },
       "The gateway 10.20.31.1 is not on the network of tarn0."}};
  const std::string before = host.Text();
  for (const auto& [change, text] : refusals) {
    try {
      change();
      ADD_FAILURE() << "not refused: " << text;
    } catch (const HostCtl::Lib::HostCtlException& error) {
      EXPECT_EQ(error.what(), text);
    }
    EXPECT_EQ(host.Text(), before);
  }
}

TEST_F(SampleNetwork, LivesWithoutAnyInterface) {
  const auto nic = Nic();
  for (const char* list : {"kernelNics", "pnics", "switches"})
    host.Set(std::string("/network/") + list, Json::array());
  nic->Refresh();
  EXPECT_EQ(nic->GetIpConfig().GetIpv4Address(), ipv4("10.20.30.40")) << "as it was last";
  EXPECT_THROW(nic->Disable(), HostCtl::Lib::HostCtlException);
  EXPECT_THROW(Writer().WriteIpv6Gateway({}), HostCtl::Lib::HostCtlException);
  EXPECT_EQ(Switches(), "");
  TarnCtl::Network::NetworkInfoImpl network;
  network.UpdateManagementInterface();
  EXPECT_EQ(network.GetManagementInterface(), nullptr);
  EXPECT_EQ(network.GetPnics().size(), 0U);
  GoDownAndStart();
  EXPECT_EQ(host.State()["power"], "on");
}

}  // namespace
