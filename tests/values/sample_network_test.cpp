// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "hostctl/lib/exception.h"
#include "tarnctl/network/virtual_switch_info_impl.h"
#include "tests/values/on_sample_host.h"

namespace {

using namespace HostCtl::Network;
using HostSample::Step;
using Json = nlohmann::json;
using Names = std::vector<std::string>;

const char* const kAllIpv6 =
    "dhcp ra 2001:db8:20::40/64 2001:db8:20::1:7f3a/128 2001:db8:20:0:9c3e:41ff:fe07:21a8/64 "
    "via 2001:db8:20::1";
const char* const kServers = "; 10.20.30.2 2001:db8:20::53";
const HostSeam::PortGroupName kManagement{"vSwitch0", "Management Network"},
    kMachines{"vSwitch0", "VM Network"}, kBackup{"vSwitch1", "Backup"};

Ipv4Address ipv4(const char* text) {
  return *Ipv4Address::FromString(text);
}

Ipv6Address ipv6(const char* text) {
  return *Ipv6Address::FromString(text);
}

class SampleNetwork : public HostSample::OnSampleHost {
 protected:
  static void Configure(const std::string& words) {
    Nic()->SetIpConfig(HostLinux::ipConfig(words));
  }
  /// Changes IPv4 alone.
  static void ConfigureIpv4(const std::string& words) {
    Configure(words + " dhcp6 ra 2001:db8:20::40/64 dns");
  }

  static void ToggleIpv6(bool enabled) {
    TarnCtl::Network::NetworkInfoImpl().SetTarnIpv6Enabled(enabled);
  }

  void GoDownAndStart() {
    host.Set("/power", "restarting");
    HostSample::useSampleHost(host.Directory());
  }

  void OfferLease(const Json& lease) { host.Set("/network/kernelNics/0/offers/dhcp", lease); }

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

  /// The uplinks of each switch and of each of its port groups: "[uplinks] vlan[active]...|".
  static std::string Switches() {
    std::string text;
    for (const auto& one : TarnCtl::Network::VirtualSwitchInfoImpl().GetVirtualSwitches()) {
      text += Json(one->GetUplinks()).dump();
      for (const auto& group : one->GetPortGroups())
        text += " " + std::to_string(group->GetVlanId()) +
                Json(group->GetNicTeamingPolicy().GetActiveUplinks()).dump();
      text += "|";
    }
    std::erase(text, '"');
    return text;
  }
};

TEST_F(SampleNetwork, FollowsWhatIsConfiguredAndOffered) {
  const std::string all = kAllIpv6, servers = kServers, own = all + "; 2001:db8:20::53",
                    lease = "dhcp 10.20.30.40/24 via 10.20.30.1; ",
                    other = "dhcp 10.9.9.9/8 via 10.0.0.1; ", none = "dhcp 0.0.0.0/0 via 0.0.0.0; ",
                    advertised = "2001:db8:20:0:9c3e:41ff:fe07:21a8/64 via ",
                    noLease = "dhcp ra 2001:db8:20::40/64 " + advertised + "2001:db8:20::1",
                    fixed = "fd00::7/56 via fe80::1%tarn0; 2001:db8:20::53";
  const Json bigger = {{"address", "10.9.9.9"}, {"netmask", "255.0.0.0"}, {"gateway", "10.0.0.1"}};
  TarnCtl::Network::RoutingInfoImpl routing(kDefaultStack);
  const Step steps[] = {
      {[] {}, lease + all + servers},
      {[] { Nic()->ReleaseLease(); }, none + noLease + servers},
      {[] { Nic()->RenewLease(LeaseRenewal::Ipv4); }, lease + noLease + "; 10.20.30.2"},
      {[] { Nic()->Disable(); },
       "dhcp 0.0.0.0/0 via 10.20.30.1; dhcp ra via 2001:db8:20::1; 10.20.30.2"},
      {[&] {
         host.Set("/faults", {{"Disable", "no"}});
         EXPECT_THROW(Nic()->Restart(), HostCtl::Lib::HostCtlException);
         host.Set("/faults", Json::object());
       },
       lease + all + servers},
      {[] { ConfigureIpv4("10.20.30.77/24"); }, "set 10.20.30.77/24 via 0.0.0.0; " + own},
      {[&] { routing.SetTarnDefaultGateway(ipv4("10.20.30.9"), false), Nic()->Restart(); },
       "set 10.20.30.77/24 via 10.20.30.9; " + own},
      {[] { ConfigureIpv4("10.20.30.78/16"); }, "set 10.20.30.78/16 via 10.20.30.9; " + own},
      {[] { ConfigureIpv4("172.16.0.9/24"); }, "set 172.16.0.9/24 via 0.0.0.0; " + own},
      {[] { ConfigureIpv4("172.16.0.9/24 none"); }, "none 0.0.0.0/0 via 0.0.0.0; " + own},
      {[&] { OfferLease(nullptr), ConfigureIpv4("172.16.0.9/24 dhcp"); }, none + own},
      {[&] { OfferLease(bigger), Nic()->RenewLease(LeaseRenewal::Ipv4AndIpv6); }, other + own},
      {[&] { OfferLease(nullptr), Nic()->RenewLease(LeaseRenewal::Ipv4); }, other + own},
      {[] { Configure("dhcp fd00::7/56"); }, other + "fd00::7/56 via ::; 2001:db8:20::53"},
      {[&] { routing.SetIpv6TarnDefaultGateway(ipv6("fe80::1%tarn0")); }, other + fixed},
      {[] { Nic()->Restart(); }, none + fixed},
      {[] { Configure("dhcp ra fd00::7/56"); },
       none + "ra fd00::7/56 " + advertised + "fe80::1%tarn0; 2001:db8:20::53"}};
  int number = 0;
  for (const auto& [change, expected] : steps) {
    change();
    EXPECT_EQ(Running(), expected) << "step " << number++;
  }
}

TEST_F(SampleNetwork, SwitchesIpv6AtTheNextStart) {
  const std::string lease = "dhcp 10.20.30.40/24 via 10.20.30.1; ",
                    on = lease + kAllIpv6 + kServers, off = lease + "dhcp ra via ::; 10.20.30.2";
  const std::tuple<bool, bool, bool> steps[] = {
      {false, false, true}, {true, true, true}, {false, true, false}, {true, true, true}};
  for (const auto& [wanted, restart, enabled] : steps) {
    ToggleIpv6(wanted);
    Nic()->Disable();
    restart ? GoDownAndStart() : Nic()->Enable();
    EXPECT_EQ(TarnCtl::Network::NetworkInfoImpl().IsTarnIpv6Enabled(), enabled);
    EXPECT_EQ(Nic()->GetIpConfig().GetIpv6Enabled(), enabled);
    EXPECT_EQ(Running(), enabled ? on : off);
  }
}

TEST_F(SampleNetwork, MovesUplinksAndTeams) {
  const std::string idle = "|[] 110[] 120[]|", taken = "|[pnic2] 110[pnic2] 120[pnic2]|";
  const Names turned = {"pnic2", "pnic0"};
  const Step steps[] = {
      {[&] { Writer().AddUplink("vSwitch0", "pnic2"); },
       "[pnic0,pnic2] 0[pnic0,pnic2] 0[pnic0,pnic2]" + idle},
      {[&] { Writer().WriteActiveUplinks(kManagement, turned); },
       "[pnic0,pnic2] 0[pnic2,pnic0] 0[pnic0,pnic2]" + idle},
      {[&] { Writer().AddUplink("vSwitch1", "pnic2"); }, "[pnic0] 0[pnic0] 0[pnic0]" + taken},
      {[&] { Writer().RemoveUplink("vSwitch0", "pnic0"); }, "[] 0[] 0[]" + taken},
      {[&] { Writer().WriteVlanId(kManagement, 4095); }, "[] 4095[] 0[]" + taken}};
  for (const auto& [change, expected] : steps) {
    change();
    EXPECT_EQ(Switches(), expected);
  }
}

TEST_F(SampleNetwork, SavesNameResolutionAtOnce) {
  TarnCtl::Network::DnsConfigImpl dns(kDefaultStack);
  dns.SetFqdn("alpha", false, "corp.lan");
  dns.RemoveNameServers();
  dns.SetSearchDomainsString("corp.lan");
  dns.AddUserSearchDomain("a.lan");
  dns.Refresh();  // and all that is forgotten
  dns.SetHostname("beta", false);
  dns.AddUserNameServer(ipv6("fe80::53%tarn0"));
  dns.SaveConfig();
  EXPECT_EQ(host.State()["network"]["dns"],
            Json::parse(R"({"hostname": "beta", "domain": "example.test",
                            "nameServers": ["10.20.30.2", "2001:db8:20::53", "fe80::53%tarn0"],
                            "searchDomains": ["example.test", "lab.example.test"]})"));
}

TEST_F(SampleNetwork, WritesNothingWhereNothingDiffersAndRefusesWithTheHostAsItWas) {
  const HostSeam::DnsChange same{"halo-01", "example.test", {}, {}};
  ExpectSame(
      {{[] { ToggleIpv6(true); }, ""},
       {[] { ConfigureIpv4("dhcp"); }, ""},
       {[] { Nic()->RenewLease(LeaseRenewal::Ipv4AndIpv6); }, ""},
       {[] { Nic()->Enable(); }, ""},
       {[] { Writer().WriteMacAddress("tarn0", "9e:3e:41:07:21:a8"); }, ""},
       {[] { Writer().WriteIpv4Gateway(ipv4("10.20.30.1")); }, ""},
       {[] { Writer().WriteIpv6Gateway(ipv6("2001:db8:20::1")); }, ""},
       {[&] { Writer().WriteDns(same); }, ""},
       {[] { Writer().AddUplink("vSwitch0", "pnic0"); }, ""},
       {[] { Writer().RemoveUplink("vSwitch0", "pnic1"); }, ""},
       {[] { Writer().WriteActiveUplinks(kBackup, Names{"pnic2"}); }, ""},
       {[] { Writer().WriteVlanId(kBackup, 120); }, ""},
       {[] { Writer().AddUplink("vSwitch9", "pnic1"); }, "There is no standard switch vSwitch9."},
       {[] { Writer().AddUplink("vSwitch0", "pnic9"); }, "There is no physical adapter pnic9."},
       {[] { Writer().WriteActiveUplinks(kMachines, Names{"pnic2"}); },
        "The standard switch vSwitch0 has no uplink pnic2."},
       {[] { Writer().WriteVlanId(kMachines, 4096); },
        "network.switches[0].portGroups[1].vlanId is not a whole number from 0 to 4095"},
       {[] { Writer().WriteIpConfig("tarn9", {}); }, "There is no kernel interface tarn9."},
       {[] { Writer().WriteMacAddress("tarn0", "9e:3e:41:07:21:g8"); },
        "\"9e:3e:41:07:21:g8\" is not a MAC address."},
       {[] { Writer().WriteIpv4Gateway(ipv4("10.20.31.1")); },
        "The gateway 10.20.31.1 is not on the network of tarn0."}});
}

}  // namespace
