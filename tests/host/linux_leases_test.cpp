// SPDX-License-Identifier: MIT
#include <fstream>

#include "linux/network/name_settings.h"
#include "tests/host/linux_ip.h"

using namespace HostLinux;

namespace {

using HostCtl::Network::LeaseRenewal;
using LinuxLeases = LinuxIp;

TEST_F(LinuxLeases, LeasesAreRenewedAndGivenBack) {
  InLab("dhcp4 dhcp6 ra", [](const NetworkLab& lab) {
    Write("dhcp dhcp6");
    const auto leased = [] {
      return waitUntil([] { return Ipv4().starts_with("10.9.0.50 ") && HasLeasedIpv6(); });
    };
    ASSERT_TRUE(leased());
    const auto again = [&](const char* message, const std::function<void()>& action) {
      const int before = lab.Logged(message);
      action();
      return waitUntil([&] { return lab.Logged(message) > before; }) && leased();
    };
    EXPECT_TRUE(again("DHCPACK", [&] { Network().RenewLease(kNic, LeaseRenewal::Ipv4); }));
    EXPECT_TRUE(again("DHCPREPLY", [&] { Network().RenewLease(kNic, LeaseRenewal::Ipv4AndIpv6); }));

    const auto release = [&] {
      ASSERT_TRUE(shell("ip neigh flush dev eth0"));
      const int before = lab.Logged("DHCPRELEASE");
      Network().ReleaseLease(kNic);
      EXPECT_TRUE(waitUntil([] { return Ipv4().starts_with("0.0.0.0 ") || Ipv4() == "none"; }));
      EXPECT_TRUE(waitUntil([&] { return lab.Logged("DHCPRELEASE") > before; }));
      EXPECT_EQ(ended("cat /run/lab/leases").output.find("10.9.0.50"), std::string::npos);
      EXPECT_TRUE(Nic().configured.GetIpv4UseDhcp()) << "the configuration stays";
      Network().ReleaseLease(kNic);
    };
    for (int way = 0; way < 4; ++way) {
      release();
      Network().SetNicUp(kNic, false);
      EXPECT_EQ(ended("cat /sys/class/net/eth0/flags").output, "0x1002\n");
      if (way == 3) lab.StartAfresh();
      if (way == 2) Network().SetNicUp(kNic, true);
      if (way == 1) shell("ip link set eth0 up"), Write("dhcp dhcp6");
      if (way == 0) shell("ip link set eth0 up"), Network().RenewLease(kNic, LeaseRenewal::Ipv4);
      EXPECT_TRUE(leased()) << way;
    }
    release();
    Network().SetNicUp(kNic, false);
    lab.StopBus();
    EXPECT_PRED_FORMAT2(testing::IsSubstring,
                        "the system bus: ", failureOf([] { Network().SetNicUp(kNic, true); }));
    EXPECT_EQ(ended("cat /sys/class/net/eth0/flags").output, "0x1003\n") << "up all the same";
  });
}

TEST_F(LinuxLeases, AReleaseIsOfOneInterface) {
  InLab("dhcp4", [](const NetworkLab& lab) {
    lab.Configure("50-all.network", "[Match]\nName=eth*\n[Network]\nDHCP=ipv4\n");
    lab.StartAfresh();
    const auto leased = [] {
      return waitUntil([] { return shell("[ $(ip -4 -br addr | grep -c 10.9.0.5) = 2 ]"); });
    };
    ASSERT_TRUE(leased());
    Network().ReleaseLease(kNic);
    EXPECT_TRUE(waitUntil([&] { return lab.Logged("DHCPRELEASE") == 1; }));
    EXPECT_TRUE(leased());
    EXPECT_TRUE(Files().List("/run/systemd/network").empty());
  });
}

TEST_F(LinuxLeases, NamesAndServers) {
  InLab("dhcp4", [](const NetworkLab& lab) {
    lab.StartHostnamed();
    Write("10.9.0.7/24 off");
    ASSERT_TRUE(
        shell("printf '# mine\\nnameserver 10.0.0.1\\noptions edns0\\n' >/etc/resolv.conf;"
              "printf '127.0.0.1 localhost\\n127.0.1.1 machine # me\\n' >/etc/hosts"));
    const auto ip = [](const char* text) { return *HostCtl::Network::parseIpAddress(text); };
    HostSeam::DnsChange change{"alpha", "corp.lan", {{ip("10.9.0.1"), ip("fe80::1%eth0")}}, {}};
    change.searchDomains = {{"corp.lan", "b.lan", "Corp.lan"}};
    Network().WriteDns(change);
    EXPECT_EQ(ended("cat /etc/resolv.conf /etc/hosts /etc/hostname; hostname").output,
              "# mine\nsearch corp.lan b.lan\nnameserver 10.9.0.1\nnameserver fe80::1%eth0\n"
              "options edns0\n127.0.0.1 localhost\n127.0.1.1\talpha.corp.lan alpha # me\n"
              "alpha.corp.lan\nalpha.corp.lan\n");
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "DNS=10.9.0.1\nDNS=fe80::1%eth0\nDomains=corp.lan\n",
                        Files().Read(kFile).value());
    const std::string before = Trace();
    Network().WriteDns(change);
    Network().WriteDns({"alpha", {}, {}, {}});
    EXPECT_EQ(Trace(), before);

    HostSeam::DnsChange bad = change;
    bad.hostname = "not_a name";
    bad.nameServers->clear();
    EXPECT_EQ(failureOf([&] { Network().WriteDns(bad); }),
              "SaveConfig not_a name.corp.lan: Invalid static hostname 'not_a name.corp.lan'");
    EXPECT_EQ(Trace(), before);

    // A mount point cannot be replaced, and a link is somebody else's.
    ASSERT_TRUE(shell("mount --bind /etc/resolv.conf /etc/resolv.conf"));
    change.searchDomains->clear();
    Network().WriteDns(change);
    EXPECT_TRUE(LinuxDriver().ReadDns().searchDomains.empty());
    ASSERT_TRUE(
        shell("umount /etc/resolv.conf; mv /etc/resolv.conf /run/resolv.conf;"
              "ln -s /run/resolv.conf /etc/resolv.conf"));
    change.searchDomains = {{"c.lan"}};
    Network().WriteDns(change);
    EXPECT_TRUE(LinuxDriver().ReadDns().searchDomains.empty())
        << "its service was told by networkd";
    ASSERT_TRUE(shell("grep -qx Domains=c.lan " + std::string(kFile) + "; rm /etc/resolv.conf"));

    Write("dhcp dns off");
    ASSERT_TRUE(waitUntil([] { return Ipv4().starts_with("10.9.0.50 "); }));
    EXPECT_TRUE(waitUntil([&] {
      Network().WriteDns({{}, {}, {}, {{"d.lan"}}});
      return ended("cat /etc/resolv.conf").output == "search d.lan\nnameserver 10.9.0.1\n";
    })) << ended("cat /etc/resolv.conf").output;
    EXPECT_TRUE(Nic().configured.GetDnsFromDhcp());
  });
}

TEST_F(LinuxLeases, NameServersFollowTheLeases) {
  InLab("", [](const NetworkLab& lab) {
    const auto servers = [] { return ended("grep -v '^#' /etc/resolv.conf").output; };
    const auto set = [](const char* server) {
      std::ofstream("/etc/resolv.conf") << "# mine\nnameserver " << server << "\n";
    };
    const auto isLeftAlone = [] {
      const std::string before = Trace();
      followLeasedServers(Files());
      return Trace() == before;
    };
    set("10.0.0.1");
    const auto start = std::chrono::steady_clock::now();
    Write("dhcp dhcp6 dns");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4))
        << "nobody waits for a lease that never comes";
    EXPECT_EQ(Ipv4(), "0.0.0.0 0.0.0.0 0.0.0.0 dhcp");
    ASSERT_TRUE(shell(KIVA_BINARY_DIR "/kiva-name-servers & echo $! >/run/follower"));
    EXPECT_TRUE(isLeftAlone()) << "there is no other yet";
    lab.Serve("dhcp4");
    EXPECT_TRUE(waitUntil([&] { return servers() == "nameserver 10.9.0.1\n"; })) << servers();
    set("10.0.0.2");
    Network().RenewLease(kNic, LeaseRenewal::Ipv4AndIpv6);
    EXPECT_TRUE(waitUntil([&] { return servers() == "nameserver 10.9.0.1\n"; })) << servers();

    EXPECT_TRUE(isLeftAlone());
    ASSERT_TRUE(shell("kill $(cat /run/follower); mkdir -p /etc/network"));
    set("10.0.0.3");
    ASSERT_TRUE(shell("echo iface eth0 inet dhcp >/etc/network/interfaces"));
    EXPECT_TRUE(isLeftAlone()) << "somebody else's interface";
    ASSERT_TRUE(
        shell("rm /etc/network/interfaces; mv /etc/resolv.conf /run/resolv.conf;"
              "ln -s /run/resolv.conf /etc/resolv.conf"));
    EXPECT_TRUE(isLeftAlone()) << "a link";
    ASSERT_TRUE(shell("mv /run/resolv.conf /etc/resolv.conf"));
    for (const char* config : {"dhcp off", "10.9.0.7/24 off"}) {
      Write(config);
      ASSERT_TRUE(waitUntil([] { return !Ipv4().starts_with("0.0.0.0 "); }));
      EXPECT_TRUE(isLeftAlone()) << config;
    }
    EXPECT_EQ(servers(), "nameserver 10.0.0.3\n");
  });
}

}  // namespace
