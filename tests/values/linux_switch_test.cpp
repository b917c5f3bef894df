// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "linux/network/mac_address.h"
#include "linux/network/switch_files.h"
#include "linux/network/switch_settle.h"

using namespace HostLinux;

namespace {

const SwitchUplink kEth0{"eth0", "00:16:3e:00:00:00", true};
const SwitchUplink kEth1{"eth1", "00:16:3e:00:00:01", true};

Switch management(std::vector<SwitchUplink> uplinks, int vlanId) {
  return {"vSwitch0",
          std::move(uplinks),
          {{"Management Network", vlanId}, {"VM Network", 0}},
          {{"tarn0", "Management Network"}}};
}

class LinuxSwitchFiles : public testing::Test {
 protected:
  /// Has the folder hold what `switches` need.
  void Write(const Switches& switches) {
    const auto changes = switchFilesFor(switches, own_);
    own_.Change("op", "object", changes, [] {});
  }
  std::string Text(const std::string& name) { return own_.Read("10-kiva-" + name).Text(); }
  std::optional<std::string> Get(const std::string& name, const char* section, const char* key) {
    return own_.Read("10-kiva-" + name).Get(section, key);
  }
  void Expect(const std::map<std::string, std::string>& ends) {
    for (const auto& [name, end] : ends) EXPECT_TRUE(Text(name).ends_with(end)) << Text(name);
  }

  const Harness::TemporaryFolder folder_;
  const Files files_{folder_.Path()};
  const OwnFiles own_{files_};
};

// What a link's file tells networkd: its name, and what else stands in [Network] and [Link].
std::string linkFile(const std::string& name, const std::string& network,
                     const std::string& link = {}) {
  return "[Match]\nName=" + name + "\n\n[Link]\nRequiredForOnline=no\n" + link +
         "\n[Network]\nLinkLocalAddressing=no\nIPv6AcceptRA=no\n" + network;
}

// What stands in the files for ourselves is read again below.
TEST_F(LinuxSwitchFiles, TellNetworkdOfOneUplinkAndOfABondInAVlan) {
  const std::string bridge = "Bridge=vSwitch0\n", bond = "Bond=vSwitch0-bond\n",
                    vlans = "\n[BridgeVLAN]\nPVID=1\nEgressUntagged=1\n\n[BridgeVLAN]\nVLAN=100\n";
  Write({management({kEth0}, 0)});
  Expect({{"vSwitch0.netdev",
           "Name=vSwitch0\nKind=bridge\n\n[Bridge]\nSTP=no\nForwardDelaySec=0\n\n"
           "[X-Kiva-PortGroup]\nName=Management Network\nVlanId=0\n\n"
           "[X-Kiva-PortGroup]\nName=VM Network\nVlanId=0\n"},
          {"vSwitch0.network", linkFile("vSwitch0", "ConfigureWithoutCarrier=yes\n", "ARP=no\n")},
          {"tarn0.netdev", "Name=tarn0\nKind=veth\n\n[Peer]\nName=tarn0-port\n"},
          {"tarn0-port.network", linkFile("tarn0-port", bridge)},
          {"eth0.network", linkFile("eth0", bridge, "MACAddress=06:16:3e:00:00:00\n")}});
  EXPECT_EQ(own_.List().size(), 5u);
  Write({});
  Write({management({kEth1, kEth0}, 100)});
  Expect({{"vSwitch0-bond.netdev",
           "Name=vSwitch0-bond\nKind=bond\nMACAddress=0a:16:3e:00:00:01\n\n"
           "[Bond]\nMode=active-backup\nMIIMonitorSec=0.1\nPrimaryReselectPolicy=always\n"},
          {"vSwitch0-bond.network", linkFile("vSwitch0-bond", bridge) + vlans},
          {"tarn0-port.network",
           linkFile("tarn0-port", bridge) + "\n[BridgeVLAN]\nPVID=100\nEgressUntagged=100\n"},
          {"eth0.network", linkFile("eth0", bond)},
          {"eth1.network", linkFile("eth1", bond + "PrimarySlave=yes\n")}});
  EXPECT_EQ(Get("vSwitch0.netdev", "Bridge", "VLANFiltering"), "yes");
  EXPECT_EQ(Get("vSwitch0.netdev", "Bridge", "DefaultPVID"), "none");

  // The first of the order takes over in a bond that stays, which has the address that it has.
  Write({management({kEth0, kEth1}, 100)});
  EXPECT_EQ(Get("eth0.network", "Network", "PrimarySlave"), "yes");
  EXPECT_EQ(Get("eth1.network", "Network", "PrimarySlave"), std::nullopt);
  EXPECT_EQ(Get("vSwitch0-bond.netdev", "NetDev", "MACAddress"), "0a:16:3e:00:00:01");
}

TEST_F(LinuxSwitchFiles, WhatWasWrittenIsReadAgain) {
  const SwitchUplink idle{"eth1", "", false};
  const Switch second{"vSwitch1", {idle}, {{"Storage", kTrunkVlan}}, {}};
  const Switches cases[] = {{},
                            {management({}, 0)},
                            {management({kEth0}, 7), second},
                            {management({kEth1, kEth0}, kTrunkVlan)},
                            {second}};
  for (const Switches& switches : cases) {
    Write(switches);
    EXPECT_EQ(readSwitchFiles(own_), switches);
    EXPECT_FALSE(own_.Change("op", "object", switchFilesFor(switches, own_), [] {}));
  }
}

TEST_F(LinuxSwitchFiles, KeepsWhatOthersWrote) {
  Write({management({kEth0}, 5)});
  folder_.Write("/etc/systemd/network/10-kiva-eth0.network",
                Text("eth0.network") + "# by hand\n[Link]\nMTUBytes=9000\n");
  folder_.Write("/etc/systemd/network/10-kiva-tarn0.network", "[Network]\nDHCP=ipv4\n");
  Write({management({kEth0, kEth1}, 0)});
  EXPECT_TRUE(Text("eth0.network").ends_with("# by hand\n[Link]\nMTUBytes=9000\n"));
  EXPECT_EQ(own_.Read("10-kiva-eth0.network").GetAll("Link", "MACAddress").size(), 0u);
  Write({});
  EXPECT_EQ(own_.List(), std::vector<std::string>{"10-kiva-tarn0.network"});
}

TEST_F(LinuxSwitchFiles, NoBridgeHasTwoUplinksWhereverTheWritingEnds) {
  const SwitchUplink idle0{"eth0", "", false}, idle1{"eth1", "", false};
  const std::vector<SwitchUplink> teams[] = {
      {kEth0}, {kEth0, kEth1}, {kEth1, idle0}, {kEth0, idle1}};
  const auto ports = [&] {
    int count = 0;
    for (const char* name : {"eth0", "eth1", "vSwitch0-bond"})
      if (own_.Read(ownFileName(name, "network")).Get("Network", "Bridge")) ++count;
    return count;
  };
  for (const auto& from : teams)
    for (const auto& to : teams) {
      Write({management(from, 0)});
      for (const auto& step : inWritingOrder(switchFilesFor({management(to, 0)}, own_))) {
        own_.Change("op", "object", {step}, [] {});
        EXPECT_LE(ports(), 1) << step.name;
      }
      EXPECT_EQ(ports(), 1);
    }
}

TEST(LinuxSwitchModel, VlansOfPorts) {
  using Ids = std::vector<int>;
  const PortVlans::Range all{1, 4094};
  const std::tuple<Ids, bool, PortVlans, Ids> cases[] = {
      {{0}, false, {1, {}}, {1}},
      {{0, 100}, true, {1, {{100, 100}}}, {1, 100}},
      {{1, 2, 0}, true, {3, {{1, 1}, {2, 2}}}, {1, 2, 3}},
      {{4095, 1}, true, {2, {all}}, {2, 1}}};
  for (const auto& [groups, filters, uplink, untagged] : cases) {
    Switch of{"vSwitch0", {}, {}, {}};
    for (const int id : groups) {
      of.portGroups.push_back({"g" + std::to_string(id), id});
      of.interfaces.push_back({"tarn" + std::to_string(id), "g" + std::to_string(id)});
    }
    EXPECT_EQ(of.FiltersVlans(), filters);
    EXPECT_EQ(of.VlansOfUplink(), uplink);
    for (std::size_t i = 0; i < groups.size(); ++i) {
      const PortVlans vlans = of.VlansOf(of.interfaces[i]);
      EXPECT_EQ(vlans.untagged, untagged[i]);
      EXPECT_EQ(vlans.tagged.size(), groups[i] == kTrunkVlan ? 1u : 0u);
    }
  }
}

TEST(LinuxSwitchModel, WaitsForLinksThatAreNotAsWritten) {
  const auto link = [](int index, const char* name, int master, const char* address = "") {
    LinkRow row{index, name, false, false};
    row.up = true;
    row.master = master;
    row.address = address;
    return row;
  };
  const char* kOwn = "06:16:3e:00:00:00";
  const LinkRow bridge = link(1, "vSwitch0", 0), port = link(2, "tarn0-port", 1),
                first = link(4, "eth0", 3), second = link(5, "eth1", 3), loose = link(5, "eth1", 1);
  LinkRow bond = link(3, "vSwitch0-bond", 1), down = port;
  bond.primary = 4;
  down.up = false;
  const SwitchUplink idle{"eth1", "", false};
  const std::tuple<std::vector<SwitchUplink>, std::vector<LinkRow>, const char*> cases[] = {
      {{}, {bridge, port}, ""},
      {{}, {port}, "vSwitch0"},
      {{}, {bridge}, "tarn0-port"},
      {{}, {bridge, down}, "tarn0-port"},
      {{kEth0}, {bridge, port}, ""},
      {{kEth0}, {bridge, port, link(4, "eth0", 1, kOwn)}, ""},
      {{kEth0}, {bridge, port, link(4, "eth0", 0, kOwn)}, "eth0"},
      {{kEth0}, {bridge, port, link(4, "eth0", 1, "00:16:3e:00:00:00")}, "eth0"},
      {{kEth0, idle}, {bridge, port, link(4, "eth0", 1, kOwn), loose}, "eth1"},
      {{kEth0, kEth1}, {bridge, port, bond, first, second}, ""},
      {{kEth0, kEth1}, {bridge, port, bond, first, loose}, "eth1"},
      {{kEth1, kEth0}, {bridge, port, bond, first, second}, "vSwitch0-bond"},
      {{kEth0, kEth1}, {bridge, port}, "vSwitch0-bond"}};
  for (const auto& [uplinks, links, missing] : cases)
    EXPECT_EQ(unsettledLink({management(uplinks, 0)}, links), missing);
}

TEST(LinuxMacAddress, OfStationsOnly) {
  for (const char* good : {"00:16:3e:00:00:01", "9E:3e:41:07:21:a8"})
    EXPECT_TRUE(MacAddress::FromString(good)) << good;
  for (const char* bad :
       {"", "00:00:00:00:00:00", "01:00:5e:00:00:01", "0:16:3e:00:00:01", "00:16:3e:00:00:1",
        "00:16:3e:00:00:01:02", "00-16-3e-00-00-01", "-1:16:3e:00:00:01", "0x:16:3e:00:00:01"})
    EXPECT_FALSE(MacAddress::FromString(bad)) << bad;
  // Also of an address that is nobody's already, as those of virtual machines are.
  for (const auto& [own, uplink, bond] :
       {std::tuple("00:16:3e:00:00:01", "06:16:3e:00:00:01", "0a:16:3e:00:00:01"),
        std::tuple("52:54:00:00:00:01", "56:54:00:00:00:01", "5a:54:00:00:00:01"),
        std::tuple("0e:00:00:00:00:01", "0a:00:00:00:00:01", "06:00:00:00:00:01")}) {
    EXPECT_EQ(MacAddress::FromString(own)->ForUplink().ToString(), uplink);
    EXPECT_EQ(MacAddress::FromString(own)->ForBond().ToString(), bond);
  }
}

}  // namespace
