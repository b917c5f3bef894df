// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/hosts/network_lab.h"
#include "linux/driver.h"
#include "linux/network/link_control.h"
#include "linux/network/switches.h"
#include "linux/tools/linux_tool_host.h"

using namespace HostLinux;

namespace {

constexpr const char* kGroup = "Management Network";
const std::string kMac0 = "00:16:3e:00:00:00", kMac1 = "00:16:3e:00:00:01";

// A machine whose network is as delivered, with a DHCP server at the other end.
class RestoredLab {
 public:
  explicit RestoredLab(const NetworkLab& lab) : lab_(lab) {
    lab_.StartNetworkd();
    lab_.Serve("dhcp4");
    autoConfigureNetwork(files_);
  }

  /// Whether the peer's pings of the machine arrive, and at which hardware address.
  std::string SeenByPeer() {
    const bool answered = waitUntil([&] {
      address_ =
          ended("ip -4 -br addr show tarn0 | sed -n 's/.*UP *\\([0-9.]*\\).*/\\1/p' | tr -d '\\n'")
              .output;
      return !address_.empty() && lab_.Peer("ping -c 1 -W 1 " + address_).status == 0;
    });
    return answered ? lab_.Peer("ip neigh show " + address_ +
                                " | sed -n 's/.*lladdr \\([^ ]*\\).*/\\1/p' | tr -d '\\n'")
                          .output
                    : "unreachable";
  }
  /// "master address" of a link.
  static std::string Link(const std::string& name) {
    return ended("ip -o link show " + name +
                 " | sed -n 's/.*master \\([^ ]*\\) .*ether \\([^ ]*\\) .*/\\1 \\2/p;t;"
                 "s/.*ether \\([^ ]*\\) .*/- \\1/p' | tr -d '\\n'")
        .output;
  }
  static std::string Folder() {
    return ended("cd /etc/systemd/network && grep -r . | sort; ip -o link | sort").output;
  }
  std::string Uplinks() {
    std::string text;
    for (const auto& one : driver_.ReadSwitches()) {
      text += one.name + ":";
      for (const auto& pnic : one.uplinks) text += " " + pnic;
      for (const auto& group : one.portGroups) text += " (" + group.name + ")";
      text += "\n";
    }
    return text;
  }

  void Use(const std::vector<std::string>& pnics) {
    network_.WriteActiveUplinks({"vSwitch0", kGroup}, pnics);
  }

  const NetworkLab& lab_;
  const Files files_;
  LinuxDriver driver_;
  HostSeam::NetworkWriter& network_ = driver_.Network();
  std::string address_;
};

TEST(LinuxSwitch, RestoredNetworkAndAnotherUplink) {
  inLab([](const NetworkLab& own) {
    RestoredLab lab(own);
    EXPECT_EQ(lab.Uplinks(), "vSwitch0: pnic0 (Management Network)\n");
    EXPECT_EQ(lab.SeenByPeer(), kMac0);
    EXPECT_EQ(lab.Link("eth0"), "vSwitch0 06:16:3e:00:00:00");

    lab.Use({});
    lab.network_.AddUplink("vSwitch0", "pnic1");
    for (const char* idle : {"eth1", "eth0"}) {
      lab.Use({idle == std::string("eth1") ? "pnic0" : "pnic1"});
      EXPECT_TRUE(lab.Link(idle).starts_with("- ")) << lab.Link(idle);
      EXPECT_EQ(ended(std::string("cat /sys/class/net/") + idle + "/flags").output, "0x1003\n");
    }
    lab.network_.RemoveUplink("vSwitch0", "pnic0");
    EXPECT_EQ(lab.Link("eth0"), "- " + kMac0) << "as it was before";
    lab.Use({"pnic1"});
    lab.network_.WriteMacAddress("tarn0", kMac1);
    EXPECT_EQ(lab.SeenByPeer(), kMac1);
    EXPECT_EQ(lab.Link("eth1"), "vSwitch0 06:16:3e:00:00:01");
    EXPECT_EQ(lab.Uplinks(), "vSwitch0: pnic1 (Management Network)\n");
    const auto pnics = [&] {
      std::string text;
      for (const auto& one : lab.driver_.ReadPnics())
        text += one.name + " " + one.switchName + " " + one.macAddress + "\n";
      return text;
    };
    const std::string shown = "pnic0  " + kMac0 + "\npnic1 vSwitch0 " + kMac1 + "\n";
    EXPECT_EQ(pnics(), shown);

    lab.lab_.StartAfresh();
    EXPECT_EQ(lab.SeenByPeer(), kMac1) << "after a restart";
    EXPECT_EQ(lab.Link("eth1"), "vSwitch0 06:16:3e:00:00:01");
    EXPECT_EQ(pnics(), shown);
  });
}

TEST(LinuxSwitch, SwitchesTakeUplinksFromEachOther) {
  inLab([](const NetworkLab& own) {
    RestoredLab lab(own);
    LinuxToolHost tools;
    tools.AddStandardSwitch("vSwitch1");
    tools.AddPortGroup("Storage", "vSwitch1");
    using enum HostSeam::UplinkChange;
    EXPECT_EQ(failureOf([&] { tools.ChangeUplink(Add, "pnic0", "vSwitch1"); }),
              "ChangeUplink pnic0: is an uplink of vSwitch0 already");
    EXPECT_EQ(failureOf([&] { tools.ChangeUplink(Remove, "pnic0", "vSwitch1"); }),
              "ChangeUplink pnic0: is no uplink of vSwitch1");
    lab.network_.AddUplink("vSwitch1", "pnic0");
    EXPECT_EQ(lab.Uplinks(), "vSwitch0: (Management Network)\nvSwitch1: pnic0 (Storage)\n");
    // A change that was killed before networkd was told.
    for (const auto again :
         {&LinuxToolHost::RemoveStandardSwitch, &LinuxToolHost::AddStandardSwitch}) {
      ASSERT_TRUE(
          shell("cd /etc/systemd/network; for end in netdev network; do sed s/vSwitch1/vSwitch2/ "
                "10-kiva-vSwitch1.$end >10-kiva-vSwitch2.$end; done; ip link set eth0 nomaster"));
      (tools.*again)("vSwitch2");
      EXPECT_EQ(lab.Link("eth0"), "vSwitch1 06:16:3e:00:00:00");
    }
    EXPECT_NE(lab.Link("vSwitch2"), "");
    ASSERT_TRUE(shell("ip link set eth0 down address " + kMac0));
    tools.AddPortGroup("Backup", "vSwitch1");
    EXPECT_EQ(lab.Link("eth0"), "vSwitch1 06:16:3e:00:00:00") << "whatever somebody did to it";
    EXPECT_TRUE(shell("ip -br link show eth0 up | grep -q ."));
    lab.network_.WriteActiveUplinks({"vSwitch1", "Storage"}, {});
    EXPECT_EQ(lab.Link("eth0"), "- 06:16:3e:00:00:00") << "idle";
    const std::function<void()> remove = [&] { tools.ChangeUplink(Remove, "pnic0", "vSwitch1"); };
    const std::function<void()> inWindow = [&] { lab.network_.RemoveUplink("vSwitch1", "pnic0"); };
    own.Configure("50-others.network", "[Match]\nMACAddress=" + kMac0 + "\n[Network]\nDHCP=yes\n");
    for (const auto& one : {remove, inWindow})
      EXPECT_EQ(failureOf(one),
                "RemoveUplink pnic0: could not come back: eth0 is configured by "
                "/etc/systemd/network/50-others.network");
    ASSERT_TRUE(
        shell("rm /etc/systemd/network/50-others.network; mkdir -p /run/openvswitch; "
              "touch /run/openvswitch/db.sock"));
    remove();
    ASSERT_TRUE(shell("rm /run/openvswitch/db.sock"));
    EXPECT_EQ(lab.Link("eth0"), "- " + kMac0);
    tools.RestoreNetwork();
    EXPECT_EQ(lab.Uplinks(), "vSwitch0: pnic0 (Management Network)\n");
    EXPECT_EQ(lab.SeenByPeer(), kMac0);
    EXPECT_EQ(lab.Link("vSwitch1"), "") << "its device is deleted";
  });
}

TEST(LinuxSwitch, AnInterfaceMovesWithAllItHas) {
  inLab([](const NetworkLab& own) {
    RestoredLab lab(own);
    auto& net = lab.network_;
    net.WriteIpConfig("tarn0", ipConfig("10.9.0.20/24"));
    net.WriteIpv4Gateway(*HostCtl::Network::Ipv4Address::FromString("10.9.0.1"));
    addStandardSwitch(lab.files_, "vSwitch1");
    addPortGroup(lab.files_, "Second", "vSwitch1");
    net.AddUplink("vSwitch1", "pnic1");
    const std::string before = lab.Folder();
    const HostSeam::PortGroupName first{"vSwitch0", kGroup}, second{"vSwitch1", "Second"},
        none{"vSwitch1", kGroup}, fourth{"vSwitch1", "Fourth"};
    const std::tuple<std::function<void()>, const char*> refused[] = {
        {[&] { net.MoveNic("tarn0", none); },
         "Migrate tarn0: there is no such port group on vSwitch1"},
        {[&] { net.MoveNic("eth1", second); }, "Migrate eth1: is on no standard switch"},
        {[&] { removePortGroup(lab.files_, kGroup, "vSwitch0"); },
         "RemovePortGroup Management Network: tarn0 is on it"},
        {[&] { removePortGroup(lab.files_, "Second", "vSwitch0"); },
         "RemovePortGroup Second: there is no such port group on vSwitch0"},
        {[&] { removeStandardSwitch(lab.files_, "vSwitch0"); },
         "RemoveStandardSwitch vSwitch0: tarn0 is on it"}};
    for (const auto& [change, text] : refused) EXPECT_EQ(failureOf(change), text);
    net.MoveNic("tarn0", first);
    EXPECT_EQ(lab.Folder(), before);

    net.MoveNic("tarn0", second);
    const auto expectMoved = [&](const char* when) {
      EXPECT_EQ(lab.SeenByPeer(), kMac0) << when;
      EXPECT_EQ(lab.address_, "10.9.0.20") << when;
      EXPECT_TRUE(shell("ping -c 1 -W 1 10.99.0.1 >/dev/null")) << when;
      EXPECT_TRUE(lab.Link("tarn0-port").starts_with("vSwitch1 ")) << when;
    };
    expectMoved("moved");
    removeStandardSwitch(lab.files_, "vSwitch0");
    EXPECT_EQ(lab.Link("eth0"), "- " + kMac0) << "given back";
    EXPECT_EQ(lab.Uplinks(), "vSwitch1: pnic1 (Second)\n");
    lab.lab_.StartAfresh();
    expectMoved("after a restart");
    addPortGroup(lab.files_, "Third", "vSwitch1");
    net.MoveNic("tarn0", {"vSwitch1", "Third"});
    removePortGroup(lab.files_, "Second", "vSwitch1");
    expectMoved("on the same switch");
    addPortGroup(lab.files_, "Fourth", "vSwitch1");
    lab.lab_.StopBus();
    const auto why = failureOf([&] { net.MoveNic("tarn0", fourth); });
    EXPECT_TRUE(why.starts_with("Migrate tarn0: the system bus: ")) << why;
    EXPECT_EQ(ended("grep -h PortGroup= /etc/systemd/network/10-kiva-tarn0-port.network").output,
              "PortGroup=Third\n");
  });
}

TEST(LinuxSwitch, RefusalsChangeNothingAndWithoutTheBusNothingDoes) {
  inLab([](const NetworkLab& own) {
    RestoredLab lab(own);
    auto& net = lab.network_;
    lab.SeenByPeer();
    const std::string before = lab.Folder();
    const bool bonds = kernelHasBonding("test");
    const bool vlans = Files().Exists("/sys/class/net/vSwitch0/bridge/vlan_filtering");
    const auto setVlan = [&](const char* group, int id) {
      net.WriteVlanId({"vSwitch0", group}, id);
    };
    const auto add = [&] { net.AddUplink("vSwitch0", "pnic1"); };
    const std::tuple<std::function<void()>, const char*, bool> cases[] = {
        {add, "AddUplink pnic1: two uplinks need a bond, and this kernel has no bonding", !bonds},
        {[&] { setVlan(kGroup, 100); },
         "WriteVlanId Management Network: this kernel's bridges cannot filter VLANs", !vlans},
        {[&] { setVlan(kGroup, 4096); },
         "WriteVlanId Management Network: 4096 is no VLAN: 0 to 4095", true},
        {[&] { setVlan("x", 1); }, "WriteVlanId x: there is no such port group on vSwitch0", true},
        {[&] { net.AddUplink("vSwitch7", "pnic1"); },
         "AddUplink pnic1: there is no standard switch vSwitch7", true},
        {[&] { net.AddUplink("vSwitch0", "pnic2"); }, "AddUplink pnic2: there is no adapter pnic2",
         true},
        {[&] { lab.Use({"pnic1"}); },
         "WriteActiveUplinks Management Network: pnic1 is no uplink of vSwitch0", true},
        {[&] { net.WriteMacAddress("eth1", kMac0); },
         "WriteMacAddress eth1: Kiva did not set up this interface", true},
        {[&] { net.WriteMacAddress("tarn0", "x"); },
         "WriteMacAddress tarn0: x is no address for an interface", true},
        {[&] { addStandardSwitch(lab.files_, "eth0"); },
         "AddStandardSwitch eth0: there is an interface of this name", true},
        {[&] { addPortGroup(lab.files_, kGroup, "vSwitch0"); },
         "AddPortGroup Management Network: there is such a port group already", true}};
    for (const auto& [change, text, here] : cases) EXPECT_EQ(here ? failureOf(change) : text, text);
    const char* others = "/etc/systemd/network/50-others.network";
    const std::tuple<std::string, std::string, std::string> used[] = {
        {"mkdir -p /etc/network; echo iface eth1 inet dhcp >/etc/network/interfaces",
         "rm /etc/network/interfaces", "eth1 is configured by ifupdown (/etc/network/interfaces)"},
        {"ip addr add 10.9.0.7/24 dev eth1", "ip addr flush dev eth1",
         "eth1 has the address 10.9.0.7"},
        {"ip link add br9 type bridge; ip link set eth1 master br9", "ip link del br9",
         "eth1 is used by br9"},
        {"ip link add vSwitch0-bond type bridge", "ip link del vSwitch0-bond",
         "there is an interface vSwitch0-bond that Kiva did not set up"},
        {std::string("printf '[Match]\\nName=eth1\\nMACAddress=00-16-3E-00-00-01\\n[Network]\\n"
                     "Bridge=br9\\n' >") +
             others,
         std::string("rm ") + others, std::string("eth1 is configured by ") + others}};
    for (const auto& [script, undo, cause] : used) {
      ASSERT_TRUE(shell(script));
      EXPECT_EQ(failureOf(add), "AddUplink pnic1: " + cause);
      ASSERT_TRUE(shell(undo));
    }
    EXPECT_EQ(lab.Folder(), before);
    lab.lab_.StopBus();
    net.AddUplink("vSwitch0", "pnic0");
    lab.Use({"pnic0"});
    setVlan(kGroup, 0);
    net.WriteMacAddress("tarn0", kMac0);
    net.RemoveUplink("vSwitch0", "pnic1");
    const auto failed = failureOf([&] { net.RemoveUplink("vSwitch0", "pnic0"); });
    EXPECT_TRUE(failed.starts_with("RemoveUplink pnic0: the system bus: ")) << failed;
    EXPECT_EQ(lab.Folder(), before);
    EXPECT_EQ(lab.SeenByPeer(), kMac0);
    lab.lab_.Configure("10-kiva-eth1.network", "[Match]\nName=eth1\n[Network]\nDHCP=ipv4\n");
    EXPECT_EQ(failureOf(add), "AddUplink pnic1: eth1 has an IP configuration of its own");
    ASSERT_TRUE(shell("ip link del eth1"));
    EXPECT_EQ(failureOf(add), "AddUplink pnic1: there is no adapter pnic1");
    if (bonds || vlans) GTEST_SKIP() << "this kernel has bonding or VLAN filtering";
  });
}

}  // namespace
