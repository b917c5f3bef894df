// SPDX-License-Identifier: MIT
// The network of a machine as it is delivered: made where there is none, and made again.
#include <gtest/gtest.h>

#include "harness/hosts/lab_console.h"
#include "linux/driver.h"

using namespace HostLinux;

namespace {

class LinuxRestore : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string why = LabConsole::Obstacle(); !why.empty()) GTEST_SKIP() << why;
  }
};

TEST_F(LinuxRestore, FromNothingToALease) {
  inLab([](const NetworkLab& lab) {
    ASSERT_TRUE(shell("echo nameserver 10.9.0.77 >/etc/resolv.conf"));
    lab.StartNetworkd();
    lab.Serve("dhcp4");
    ASSERT_TRUE(shell(KIVA_BINARY_DIR "/kiva-name-servers >/run/lab/names.log 2>&1 &"));
    LabConsole console(lab);
    ASSERT_TRUE(shell("halocli network restore"));
    const auto showsLease = [&] {
      console.Press("Space");
      return console.Look().Shows("https://10.9.0.50/ (DHCP)");
    };
    EXPECT_TRUE(waitUntil(showsLease)) << console.Look().Dump() << ended("ip addr").output;
    EXPECT_TRUE(waitUntil([] {
      return Files().Read("/etc/resolv.conf").value_or("").find("nameserver 10.9.0.1\n") !=
             std::string::npos;
    })) << ended("cat /etc/resolv.conf /run/lab/names.log").output;
    EXPECT_FALSE(Files().Exists("/var/lib/kiva")) << "nothing was there to be kept";
    lab.StartAfresh();
    EXPECT_TRUE(waitUntil([&] { return lab.Peer("ping -c 1 -W 1 10.9.0.50").status == 0; }));
    for (const auto& [signal, status] : {std::pair("TERM", 143), std::pair("KILL", 137)}) {
      const std::string kill = std::string("kill -") + signal + " $!; ";
      EXPECT_EQ(ended("networkd=$(cat /run/lab/networkd.pid); kill -STOP $networkd; "
                      "halocli network restore & while test -e /etc/systemd/network/10-kiva-eth0*;"
                      "do sleep 0.01; done; " +
                      kill + "kill -CONT $networkd; wait $!")
                    .status,
                status);
      EXPECT_TRUE(shell("test -e /sys/class/net/vSwitch0/brif/eth0"));
      EXPECT_EQ(Files().Exists("/etc/systemd/network/10-kiva-eth0.network"), status == 143)
          << "a stop waits until the network is restored";
    }
    EXPECT_TRUE(shell("halocli network restore")) << "also after a kill half way";
    EXPECT_TRUE(waitUntil([] { return shell("ip addr show tarn0 | grep -q 10.9.0.5"); }));
  });
}

bool leased() {
  return waitUntil([] { return shell("ip addr show tarn0 | grep -q 10.9.0.50"); });
}

// All that /etc says about the network, and the links.
std::string network() {
  return ended(
             "cd /etc; grep -rs . systemd/network resolv.conf sysctl.d | sort; ip -o -br link | "
             "sed 's/ .*//' | sort; ip -o -4 addr | cut -d' ' -f2-7")
      .output;
}

TEST_F(LinuxRestore, ClearsWhatKivaWroteAndKeepsACopy) {
  inLab([](const NetworkLab& lab) {
    lab.Configure("90-others.network", "[Match]\nName=eth9\n");
    const std::string empty = network();
    ASSERT_TRUE(shell("echo nameserver 10.9.0.77 >/etc/resolv.conf"));
    lab.StartNetworkd();
    lab.StartHostnamed();
    lab.Serve("dhcp4");
    LinuxDriver driver;
    HostSeam::NetworkWriter& net = driver.Network();
    net.AutoConfigure();
    net.WriteIpConfig("tarn0", ipConfig("10.9.0.20/24"));
    const auto ip = [](const char* text) { return *HostCtl::Network::parseIpAddress(text); };
    net.WriteDns({{}, {}, {{ip("10.9.0.78"), ip("10.9.0.79")}}, {{"lab.example"}}});
    net.WriteIpv6Enabled(false);
    net.WriteIpConfig("eth1", ipConfig("10.9.0.30/24"));
    const std::string before = network();
    ASSERT_TRUE(shell("mkdir -p /var/lib && echo no folder >/var/lib/kiva"));
    EXPECT_TRUE(failureOf([&] { net.ClearConfiguration(); }).starts_with("ClearNetworkConfig "));
    EXPECT_EQ(network(), before) << "without a copy";
    ASSERT_TRUE(
        shell("rm /var/lib/kiva; mkdir /run/lab/kept; cd /etc;"
              "cp systemd/network/10-* resolv.conf sysctl.d/zz-kiva-ipv6.conf /run/lab/kept"));
    ASSERT_TRUE(shell("kill $(cat /run/lab/networkd.pid); sleep 0.2"));
    EXPECT_TRUE(failureOf([&] { net.ClearConfiguration(); }).starts_with("ClearNetworkConfig "));
    EXPECT_EQ(network(), before) << "without networkd";
    lab.StartNetworkd();
    net.ReleaseLease("tarn0");
    ASSERT_TRUE(shell("rm -r /var/lib/kiva"));
    net.ClearConfiguration();
    EXPECT_EQ(network(), empty);
    EXPECT_EQ(ended("cd /var/lib/kiva/network-*Z && stat -c '%a %u' . && diff -r . /run/lab/kept; "
                    "find . -type f ! -perm 600")
                  .output,
              "700 0\n");
    net.ClearConfiguration();
    EXPECT_EQ(ended("ls /var/lib/kiva | wc -l").output, "1\n") << "nothing was left to clear";
    net.AutoConfigure();
    EXPECT_TRUE(leased());
    // Somebody's ten clearings in this second and the next ones, and ten by a clock set back since.
    ASSERT_TRUE(
        shell("cd /var/lib/kiva; now=$(date +%s); for i in 0 1 2 3 4 5 6 7 8 9; do "
              "mkdir -p network-$(date -u -d @$((now + i)) +%FT%TZ)/x network-9999-0$i/x; done"));
    net.ClearConfiguration();
    EXPECT_EQ(ended("ls /var/lib/kiva | wc -l; ls /var/lib/kiva | grep -c Z-2").output, "10\n1\n");
  });
}

TEST_F(LinuxRestore, WhatOthersHaveStaysTheirs) {
  inLab([](const NetworkLab& lab) {
    lab.StartNetworkd();
    lab.Serve("dhcp4");
    LinuxDriver driver;
    HostSeam::NetworkWriter& net = driver.Network();
    net.WriteIpConfig("eth0", ipConfig("10.9.0.30/24"));
    net.ClearConfiguration();
    net.AutoConfigure();
    EXPECT_TRUE(shell("ip link show eth0 | grep -q 'master vSwitch0'")) << "as it was ours before";
    ASSERT_TRUE(leased());
    const std::string restored = network();
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"mkdir -p /run/openvswitch; touch /run/openvswitch/db.sock", "rm /run/openvswitch/db.sock",
         "Open vSwitch: its database does not answer"},
        {"ip link add vSwitch0 type bridge", "ip link del vSwitch0",
         "there is an interface vSwitch0 that Kiva did not set up"},
        {"ip link add tarn0-port type bridge", "ip link del tarn0-port",
         "there is an interface tarn0-port that Kiva did not set up"},
        {"ip addr add 10.9.0.7/24 dev eth0; ip link set eth0 up; ip link add br9 type bridge; "
         "ip link set eth1 master br9",
         "ip link del br9; ip addr flush dev eth0; ip link set eth0 down",
         "eth0 has the address 10.9.0.7, eth1 is used by br9"}};
    net.ClearConfiguration();
    ASSERT_TRUE(shell("ip link set eth0 down; ip link set eth1 down"));
    for (const auto& [script, undo, cause] : cases) {
      ASSERT_TRUE(shell(script));
      lab.Configure("10-kiva-eth1.network", "[Match]\nName=eth1\n[Network]\nDHCP=ipv4\n");
      const std::string before = network();
      for (const auto change :
           {&HostSeam::NetworkWriter::AutoConfigure, &HostSeam::NetworkWriter::ClearConfiguration})
        EXPECT_TRUE(failureOf([&] { (net.*change)(); }).ends_with(cause)) << cause;
      EXPECT_EQ(network(), before) << cause;
      ASSERT_TRUE(shell(undo + std::string("; rm /etc/systemd/network/10-kiva-eth1.network")));
    }
    ASSERT_TRUE(shell("kill $(cat /run/lab/networkd.pid); sleep 0.2"));
    EXPECT_TRUE(failureOf([&] { net.AutoConfigure(); }).starts_with("AutoConfigNetwork "));
    EXPECT_EQ(ended("ip -br link show up | grep eth").output, "") << "brought up in vain";
    lab.StartNetworkd();
    ASSERT_TRUE(shell("ip addr add 169.254.3.4/16 scope link dev eth0"));
    net.AutoConfigure();
    EXPECT_TRUE(leased());
    EXPECT_EQ(network(), restored);
    lab.Configure("50-others.network", "[Match]\nName=eth0\n[Network]\nDHCP=ipv4\n");
    ASSERT_TRUE(shell("ip addr add 10.9.0.7/24 dev eth1"));
    const std::string before = network();
    EXPECT_EQ(failureOf([&] { net.ClearConfiguration(); }),
              "ClearNetworkConfig the network: eth0 is configured by "
              "/etc/systemd/network/50-others.network, eth1 has the address 10.9.0.7");
    EXPECT_EQ(network(), before) << "cleared for nothing";
    ASSERT_TRUE(shell("ip addr flush dev eth1"));
    net.ClearConfiguration();
    net.AutoConfigure();
    EXPECT_TRUE(shell("ip link show eth1 | grep -q 'master vSwitch0'")) << "the other one";
    net.ClearConfiguration();
    net.WriteIpConfig("eth0", ipConfig("10.9.0.30/24"));
    ASSERT_TRUE(shell("ip addr add 10.9.0.7/24 dev eth1"));
    net.ClearConfiguration();
    EXPECT_TRUE(waitUntil([] { return shell("ip -4 addr show eth0 | grep -q 10.9.0.5"); }))
        << "what is not Kiva's is in force again where no switch is lost by it";
  });
}

TEST_F(LinuxRestore, TheFirstAdapterWithLinkIsTakenElseTheFirst) {
  inLab([](const NetworkLab& lab) {
    lab.StartNetworkd();
    lab.PlugInBroken();
    for (const auto& [cable, taken] : {std::pair(0, "eth1"), std::pair(1, "eth0")}) {
      lab.PullCable(cable);
      LinuxDriver().Network().AutoConfigure();
      EXPECT_EQ(ended("ls /sys/class/net/vSwitch0/brif | grep eth").output,
                taken + std::string("\n"));
    }
    ASSERT_TRUE(shell("ip link del eth0; ip link del eth1"));
    EXPECT_EQ(failureOf([] { LinuxDriver().Network().AutoConfigure(); }),
              "AutoConfigNetwork vSwitch0: no adapter can be brought up");
  });
}

TEST_F(LinuxRestore, NothingIsSentIntoTheNetworkAnyMore) {
  const Harness::TemporaryFolder folder;
  const Files files(folder.Path());
  LinuxDriver driver(folder.Path());
  driver.Network().DisableNetDumper();
  folder.Write("/sys/module/netconsole/initstate", "live\n");
  folder.Write("/sbin/modprobe", "#!/bin/sh\necho \"$@: in use\"\nexit 1\n");
  std::filesystem::permissions(folder.Path() / "sbin/modprobe", std::filesystem::perms{0755});
  EXPECT_EQ(failureOf([&] { driver.Network().DisableNetDumper(); }),
            "DisableNetDumper netconsole: --remove netconsole: in use");
  folder.Write("/sys/kernel/config/netconsole/on/enabled", "1\n");
  folder.Write("/sys/kernel/config/netconsole/off/enabled", "0\n");
  folder.Write("/etc/default/kdump-tools", "USE_KDUMP=1\nSSH=\"a@b\"\n#NFS=\"x:/y\"\n");
  driver.Network().DisableNetDumper();
  EXPECT_EQ(files.ReadLine("/sys/kernel/config/netconsole/on/enabled")[0], '0');
  EXPECT_EQ(files.Read("/sys/kernel/config/netconsole/off/enabled"), "0\n");
  EXPECT_EQ(files.Read("/etc/default/kdump-tools"), "USE_KDUMP=1\nSSH=\n#NFS=\"x:/y\"\n");
}

}  // namespace
