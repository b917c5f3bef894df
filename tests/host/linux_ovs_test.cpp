// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/hosts/network_lab.h"
#include "linux/driver.h"
#include "linux/network/switches.h"

using namespace HostLinux;

namespace {

using HostCtl::Network::HostLocalPort;

constexpr const char* kGroup = "Management Network";
const std::string kMac = "00:16:3e:00:00:50";

// What an operator would call the same: the addresses and routes of mgmt0, and the switch's ports.
constexpr const char* kState =
    "{ cat /sys/class/net/mgmt0/address; ip -br addr show mgmt0 | sed 's/^[^ ]* *[^ ]* *//; "
    "s/fe80:[^ ]* *//';"
    "ip route show dev mgmt0; ip route show table 77; ip -6 route show fd00:77::/64;"
    "} 2>/dev/null | sed 's/ proto static//;s/ nhid 7//';"
    "ovs-vsctl -f csv --columns=name,tag,protected,trunks,external_ids list port | sort;"
    "ovs-vsctl --bare --if-exists get interface mgmt0 mac";

// A machine whose management interface is an internal one of Open vSwitch.
class OvsLab {
 public:
  explicit OvsLab(const std::string& file = {}) {
    lab_.StartNetworkd();
    lab_.PullCable(1);
    lab_.StartOpenVswitch();
    if (file.empty()) {
      Demand(R"(ip addr add 10.9.0.5/24 dev mgmt0; ip addr add 10.9.0.6/24 dev mgmt0
        ip -6 addr add fd00:9::5/64 dev mgmt0 nodad
        ip route add default via 10.9.0.1; ip nexthop add id 7 via 10.9.0.1 dev mgmt0
        ip route add 10.77.0.0/16 nhid 7; ip -6 route add fd00:77::/64 via fd00:9::1 metric 7
        ip route add 10.78.0.0/16 via 10.9.0.1 src 10.9.0.6 table 77)");
    } else {
      lab_.Configure("20-mgmt.network", file);
      Demand("networkctl reload");
    }
  }

  static void Demand(const std::string& script) {
    if (!shell(script)) throw std::runtime_error(script);
  }
  std::string State() { return ended(kState).output; }
  bool Reaches() {
    return waitUntil([&] { return lab_.Peer("ping -c 1 -W 1 10.9.0.5").status == 0; });
  }
  void MakeStandardSwitch() {
    network_.RemoveDistributedUplink("dvs0", "pnic0");
    addStandardSwitch(files_, "vSwitch0");
    addPortGroup(files_, kGroup, "vSwitch0");
    network_.AddUplink("vSwitch0", "pnic0");
  }
  void Move(const HostLocalPort& port) { network_.MoveNicToPort("mgmt0", port); }
  /// "host-local-0 mgmt0 20 blocked pnic0; " of each port but the switch's own.
  std::string Ports() {
    std::string text;
    const auto switches = driver_.ReadDistributedSwitches();
    for (const auto& port : switches.at(0).ports) {
      if (port.name == "dvs0") continue;
      text += port.name + " " + port.nic + " " + std::to_string(port.vlanId);
      if (port.blocked) text += " blocked";
      for (const auto& uplink : port.uplinks.value_or(std::vector<std::string>()))
        text += " " + uplink;
    }
    return text;
  }
  static std::string Isolated() {
    return ended("ovs-vsctl --bare --columns=name find port protected=true | sort | xargs").output;
  }

  NetworkLab lab_;
  const Files files_;
  LinuxDriver driver_;
  HostSeam::NetworkWriter& network_ = driver_.Network();
};

class LinuxOvs : public testing::Test {
 protected:
  void SetUp() override {
    if (const auto why = NetworkLab::ObstacleForOpenVswitch(); !why.empty()) GTEST_SKIP() << why;
  }
};

std::string withoutPorts(const std::string& state) {
  return state.substr(0, state.find("dvs0,"));
}

// The uplinks give and take untagged frames; a VLAN of the port's own keeps the peer out of reach.
TEST_F(LinuxOvs, AnotherPortOfTheSwitch) {
  inNamespaces([] {
    OvsLab lab;
    ASSERT_TRUE(lab.Reaches());
    const std::string before = withoutPorts(lab.State());
    EXPECT_EQ(lab.Ports(), "mgmt0 mgmt0 0");
    lab.Move({"host-local-0", 20, true, {"pnic0"}});
    EXPECT_EQ(withoutPorts(lab.State()), before);
    EXPECT_EQ(lab.Ports(), "host-local-0 mgmt0 20 pnic0");
    EXPECT_EQ(lab.Isolated(), "eth1 host-local-0\n");
    ASSERT_TRUE(shell("ovs-vsctl set port eth0 tag=20; ovs-vsctl set port eth1 tag=20"));
    EXPECT_TRUE(lab.Reaches()) << "by the uplink that it uses";
    ASSERT_TRUE(shell("ovs-ofctl mod-port dvs0 mgmt0 no-forward"));
    EXPECT_EQ(lab.Ports(), "host-local-0 mgmt0 20 blocked pnic0");
    lab.Move({"host-local-1", 21, false, {}});
    EXPECT_EQ(lab.Ports(), "host-local-1 mgmt0 21 blocked") << "as it was";
    EXPECT_EQ(lab.Isolated(), "eth0 eth1 host-local-1\n");
    ASSERT_TRUE(shell("ovs-vsctl add-port dvs0 nic1 -- set interface nic1 type=internal"));
    lab.network_.MoveNicToPort("nic1", {"host-local-7", 20, true, {"pnic1"}});
    EXPECT_EQ(lab.Isolated(), "eth0 host-local-1 host-local-7\n") << "nothing is taken from nic1";
    ASSERT_TRUE(shell("ovs-vsctl del-port host-local-7"));
    lab.Move({"host-local-2", 20, true, {"pnic1", "pnic0"}});
    EXPECT_EQ(lab.Ports(), "host-local-2 mgmt0 20");
    EXPECT_EQ(lab.Isolated(), "\n");
    EXPECT_EQ(withoutPorts(lab.State()), before);
    EXPECT_TRUE(lab.Reaches());
  });
}

TEST_F(LinuxOvs, NetworkdGivesTheAddressesBackWhereItDid) {
  inNamespaces([] {
    OvsLab lab(
        "[Match]\nName=mgmt0\n[Network]\nAddress=10.9.0.5/24\nGateway=10.9.0.1\n"
        "[Route]\nDestination=10.77.0.0/16\nGateway=10.9.0.1\n");
    ASSERT_TRUE(lab.Reaches());
    const std::string before = withoutPorts(lab.State());
    lab.Move({"host-local-0", 20, true, {"pnic0", "pnic1"}});
    EXPECT_EQ(withoutPorts(lab.State()), before);
    lab.lab_.StartAfresh();
    EXPECT_TRUE(waitUntil([&] { return withoutPorts(lab.State()) == before; })) << lab.State();
    EXPECT_EQ(lab.Ports(), "host-local-0 mgmt0 20");
    lab.MakeStandardSwitch();
    lab.network_.MoveNic("mgmt0", {"vSwitch0", kGroup});
    EXPECT_EQ(lab.Ports(), "");
    EXPECT_TRUE(lab.Reaches());
    EXPECT_EQ(withoutPorts(lab.State()), before);
    EXPECT_EQ(lab.lab_.Peer("ip neigh show 10.9.0.5 | grep -c " + kMac).output, "1\n");
    lab.lab_.StartAfresh();
    EXPECT_TRUE(lab.Reaches()) << "after a restart";
    EXPECT_TRUE(waitUntil([&] { return withoutPorts(lab.State()) == before; })) << lab.State();
  });
}

TEST_F(LinuxOvs, WhatOnlyTheKernelKnowsMovesToo) {
  inNamespaces([] {
    OvsLab lab;
    lab.Demand("ovs-vsctl clear interface mgmt0 mac");
    const std::string before = lab.State();
    lab.MakeStandardSwitch();
    const std::string files = ended("cd /etc/systemd/network && grep -r . | sort").output;
    const std::string halfway = lab.State();
    const std::string inTheWay = "/etc/systemd/network/10-kiva-mgmt0-port.network";
    ASSERT_TRUE(shell("mkdir " + inTheWay));
    const auto move = [&] { lab.network_.MoveNic("mgmt0", {"vSwitch0", kGroup}); };
    EXPECT_EQ(failureOf(move), "Migrate mgmt0: " + inTheWay + " is no file that can be read");
    EXPECT_EQ(lab.State(), halfway);
    EXPECT_EQ(ended("cd /etc/systemd/network && grep -r . | sort").output, files);
    ASSERT_TRUE(shell("rmdir " + inTheWay + "; ip link add mgmt0-port type bridge"));
    EXPECT_EQ(failureOf(move),
              "Migrate mgmt0: there is an interface mgmt0-port that Kiva did not set up");
    ASSERT_TRUE(shell("ip link del mgmt0-port"));
    EXPECT_EQ(lab.State(), halfway);
    move();
    EXPECT_TRUE(lab.Reaches());
    lab.lab_.StartAfresh();
    EXPECT_TRUE(lab.Reaches());
    EXPECT_EQ(withoutPorts(lab.State()), withoutPorts(before));
  });
}

TEST_F(LinuxOvs, UplinksComeBackAsTheyWere) {
  inNamespaces([] {
    OvsLab lab;
    ASSERT_TRUE(
        shell("ovs-vsctl del-port eth0 -- del-port eth1 -- add-bond dvs0 b eth0 eth1 "
              "trunks=10,20 bond_mode=active-backup external_ids:say='\"a, b\"' -- "
              "set interface eth1 external_ids:rack=7"));
    const auto uplinks = [&] { return lab.driver_.ReadDistributedSwitches().at(0).uplinks; };
    const char* records =
        "ovs-vsctl -f csv --columns=name,trunks,bond_mode,external_ids list port b;"
        "ovs-vsctl -f csv --columns=name,external_ids list interface eth0 eth1 | sort";
    const std::string before = ended(records).output;
    const auto add = [&](const char* pnic) { lab.network_.AddDistributedUplink("dvs0", pnic); };
    const auto remove = [&](const char* pnic) {
      lab.network_.RemoveDistributedUplink("dvs0", pnic);
    };
    const auto isTooSlow = [&](const char* operation, const auto& change) {
      lab.lab_.HangOpenVswitch(true);
      EXPECT_PRED_FORMAT2(testing::IsSubstring, operation, failureOf([&] { change("pnic0"); }));
      lab.lab_.HangOpenVswitch(false);
    };
    isTooSlow("RemoveDistributedUplink pnic0: Open vSwitch: ", remove);
    EXPECT_EQ(ended(records).output, before);
    for (const char* pnic : {"pnic1", "pnic0"}) remove(pnic);
    lab.Demand("ip link set eth0 down");
    isTooSlow("AddDistributedUplink pnic0: Open vSwitch: ", add);
    EXPECT_TRUE(uplinks().empty()) << "what was only too slow is taken back";
    EXPECT_EQ(ended("ip -br link show eth0 up").output, "");
    for (const char* pnic : {"pnic0", "pnic1"}) add(pnic);
    EXPECT_EQ(ended(records).output, before);
    EXPECT_EQ(uplinks(), (std::vector<std::string>{"pnic0", "pnic1"}));
    EXPECT_EQ(ended("ovs-vsctl --bare get bridge dvs0 external_ids").output, "{}\n");
  });
}

TEST_F(LinuxOvs, RefusalsAndFailuresChangeNothing) {
  inNamespaces([] {
    OvsLab lab;
    lab.Demand("ovs-vsctl add-port dvs0 tarn0 -- set interface tarn0 type=internal");
    const std::string before = lab.State();
    const auto moved = [&](const HostLocalPort& port, const char* cause,
                           const char* nic = "mgmt0") {
      EXPECT_EQ(failureOf([&] { lab.network_.MoveNicToPort(nic, port); }),
                std::string("MoveToHostLocalPort ") + nic + ": " + cause);
    };
    moved({"host-local-0", 0, true, {}}, "0 is no VLAN of a port: 1 to 4094");
    moved({"host-local-0", 4095, true, {}}, "4095 is no VLAN of a port: 1 to 4094");
    moved({"a b", 1, true, {}}, "a b is no name of a port");
    moved({"eth0", 1, true, {}}, "there is a port eth0 already");
    moved({"host-local-0", 1, true, {"pnic7"}}, "pnic7 is no uplink of dvs0");
    ASSERT_TRUE(shell("ovs-vsctl set bridge dvs0 external_ids:vendor=x"));
    moved({"host-local-0", 1, true, {}}, "dvs0 is managed by others");
    ASSERT_TRUE(shell("ovs-vsctl set bridge dvs0 external_ids:vendor=kiva"));
    ASSERT_TRUE(
        shell("mkdir -p /etc/network; echo iface mgmt0 inet dhcp >/etc/network/interfaces"));
    moved({"host-local-0", 1, true, {}}, "is configured by ifupdown (/etc/network/interfaces)");
    ASSERT_TRUE(shell("rm /etc/network/interfaces"));
    moved({"p", 1, true, {}}, "is the switch's own interface, which has no other port", "dvs0");
    moved({"p", 1, true, {}}, "is no interface that Open vSwitch made", "eth0");
    moved({"p", 1, true, {}}, "is on no distributed switch", "lo");
    const HostSeam::PortGroupName nowhere{"vSwitch0", "x"};
    EXPECT_EQ(failureOf([&] { lab.network_.MoveNic("mgmt0", nowhere); }),
              "Migrate mgmt0: there is no standard switch vSwitch0");
    EXPECT_EQ(failureOf([&] { lab.network_.AddDistributedUplink("dvs1", "pnic0"); }),
              "AddDistributedUplink pnic0: there is no distributed switch dvs1");
    EXPECT_EQ(failureOf([&] { lab.network_.AutoConfigure(); }),
              "AutoConfigNetwork vSwitch0: there is an interface tarn0 that Kiva did not set up");
    addStandardSwitch(lab.files_, "vSwitch0");
    const auto add = [&] { lab.network_.AddUplink("vSwitch0", "pnic1"); };
    EXPECT_EQ(failureOf(add), "AddUplink pnic1: eth1 is an uplink of dvs0");
    EXPECT_EQ(lab.driver_.ReadPnics().at(1).switchName, "dvs0");
    ASSERT_TRUE(shell("kill -STOP $(cat /run/lab/ovsdb)"));
    EXPECT_EQ(failureOf(add), "AddUplink Open vSwitch: its database does not answer");
    ASSERT_TRUE(shell("kill -CONT $(cat /run/lab/ovsdb)"));
    EXPECT_EQ(lab.State(), before);
  });
}

// Puts a script before a tool of Open vSwitch's; $0 is to be called by it.
std::string before(const std::string& tool, const std::string& script) {
  const std::string path = "/usr/bin/" + tool;
  return "mv " + path + " " + path + ".real; printf '#!/bin/sh\n" + script + "\nexec " + path +
         ".real \"$@\"\n' >" + path + "; chmod +x " + path;
}

TEST_F(LinuxOvs, FailuresOnTheWayAreUndone) {
  inNamespaces([] {
    OvsLab lab;
    ASSERT_TRUE(lab.Reaches());
    const std::string state = lab.State();
    const auto move = [&] { lab.Move({"host-local-0", 20, true, {"pnic0"}}); };
    ASSERT_TRUE(shell(before("ovs-vsctl", "kill -STOP $(cat /run/lab/ovs)")));
    EXPECT_TRUE(failureOf(move).starts_with("MoveToHostLocalPort mgmt0: Open vSwitch: "));
    ASSERT_TRUE(shell("mv /usr/bin/ovs-vsctl.real /usr/bin/ovs-vsctl"));
    lab.lab_.HangOpenVswitch(false);
    EXPECT_EQ(lab.State(), state) << "though Open vSwitch was only slow";
    EXPECT_TRUE(lab.Reaches());
    lab.Demand("ovs-vsctl clear interface mgmt0 mac; " +
               before("ovs-ofctl", "case $* in *mod-port*) echo no; exit 1 ;; esac"));
    const std::string plain = lab.State();
    EXPECT_EQ(failureOf(move), "MoveToHostLocalPort mgmt0: Open vSwitch: no");
    EXPECT_EQ(lab.State(), plain);
    EXPECT_TRUE(lab.Reaches());
  });
}

}  // namespace
