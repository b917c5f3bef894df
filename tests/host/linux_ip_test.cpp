// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <fstream>

#include "harness/hosts/network_lab.h"
#include "linux/driver.h"
#include "linux/network/name_settings.h"

using namespace HostLinux;

namespace {

using HostCtl::Network::Ipv4Address;
using HostCtl::Network::Ipv6Address;
using HostCtl::Network::Ipv6Network;
using HostCtl::Network::LeaseRenewal;

constexpr const char* kNic = "eth0";
constexpr const char* kFile = "/etc/systemd/network/10-kiva-eth0.network";

Ipv4Address ip4(const std::string& text) {
  return Ipv4Address::FromString(text).value();
}

Ipv6Address ip6(const char* text) {
  return Ipv6Address::FromString(text).value();
}

// A machine whose eth0 networkd configures by a file of ours.
class LinuxIp : public testing::Test {
 protected:
  static void InLab(const char* services, const std::function<void(const NetworkLab&)>& body) {
    inLab([&](const NetworkLab& lab) {
      lab.StartNetworkd();
      lab.Serve(services);
      body(lab);
    });
  }

  static HostSeam::KernelNic Nic() {
    for (auto& nic : LinuxDriver().ReadKernelNics())
      if (nic.name == kNic) return nic;
    return {};
  }
  static std::string Ipv4() { return ipv4Text(Nic().running); }
  static bool HasIpv6(const std::string& wanted) {
    const auto nic = Nic();
    const auto& networks = nic.running.GetIpv6Networks();
    return std::any_of(networks.begin(), networks.end(),
                       [&](const Ipv6Network& one) { return one.ToString() == wanted; });
  }
  // The peer's server hands out fd00:9::50 to fd00:9::59.
  static bool HasLeasedIpv6() {
    for (int last = 50; last < 60; ++last)
      if (HasIpv6("fd00:9::" + std::to_string(last) + "/128")) return true;
    return false;
  }
  static std::string Gateway6() {
    return LinuxDriver().ReadRouting().ipv6Gateway.GetScopedAddress();
  }
  static HostSeam::NetworkWriter& Network() {
    static LinuxDriver driver;
    return driver.Network();
  }
  static void Write(const std::string& config) { Network().WriteIpConfig(kNic, ipConfig(config)); }
  static bool Becomes(const std::string& ipv4) {
    return waitUntil([=] { return Ipv4() == ipv4; });
  }
  // Changes with every file that counts.
  static std::string Trace() {
    return ended("stat -c '%n %i %y' /etc/systemd/network/* /etc/resolv.conf /etc/hosts").output;
  }
};

TEST_F(LinuxIp, DhcpToStaticToNoneAndBack) {
  InLab("dhcp4", [](const NetworkLab& lab) {
    const std::string leased = "10.9.0.50 255.255.255.0 10.9.0.1 dhcp",
                      fixed = "10.9.0.7 255.255.255.0 ";
    // A configuration or a gateway, and what comes of it: with static addresses at the return.
    const std::pair<std::string, std::string> steps[] = {
        {"dhcp off", leased},
        {"10.9.0.7/24 off", fixed + "0.0.0.0 static"},
        {"10.9.0.1", fixed + "10.9.0.1 static"},
        {"0.0.0.0", fixed + "0.0.0.0 static"},
        {"10.9.0.1", fixed + "10.9.0.1 static"},
        {"10.7.0.7/16 off", "10.7.0.7 255.255.0.0 0.0.0.0 static"},
        {"none off", "none"},
        {"dhcp off", leased}};
    for (const auto& [change, state] : steps) {
      const auto make = [&change = change] {
        change.ends_with(" off") ? Write(change) : Network().WriteIpv4Gateway(ip4(change));
      };
      make();
      EXPECT_TRUE(state.ends_with("static") ? Ipv4() == state : Becomes(state)) << change << Ipv4();
      const std::string before = Trace();
      make();
      EXPECT_EQ(Trace(), before) << "what is so already is not touched";
    }
    lab.StartAfresh();
    EXPECT_TRUE(Becomes(leased));
  });
}

TEST_F(LinuxIp, Ipv6ByEveryWay) {
  InLab("ra dhcp6", [](const NetworkLab&) {
    const auto settled = [](const char* config, bool byDhcp, bool byRouter, const char* gateway) {
      Write(config);
      return waitUntil([&] {
        return HasLeasedIpv6() == byDhcp && HasIpv6("fd00:9::216:3eff:fe00:0/64") == byRouter &&
               Gateway6().starts_with(gateway) && Gateway6().ends_with(byDhcp ? "%eth0" : "");
      });
    };
    EXPECT_TRUE(settled("none dhcp6 ra", true, true, "fe80::"));
    EXPECT_TRUE(settled("none ra", false, true, "fe80::"));
    EXPECT_TRUE(settled("none dhcp6", true, false, "fe80::")) << "who else routes?";
    EXPECT_TRUE(settled("none fd00:9::7/64", false, false, "::"));
    EXPECT_TRUE(HasIpv6("fd00:9::7/64"));
    Network().WriteIpv6Gateway(ip6("fd00:9::1"));
    EXPECT_EQ(Gateway6(), "fd00:9::1");
    EXPECT_EQ(failureOf([&] { Network().WriteIpv6Gateway(ip6("fe80::9%eth1")); }),
              "SetIpv6TarnDefaultGateway fe80::9%eth1: is in no network of eth0");
    Network().WriteIpv6Gateway(ip6("fe80::9%eth0"));
    EXPECT_EQ(Gateway6(), "fe80::9%eth0");
    EXPECT_TRUE(settled("none ra fd00:9::7/64", false, true, "fe80::9%eth0"))
        << "an operator's gateway is the only one";
  });
}

TEST_F(LinuxIp, Ipv6OffAtTheNextStart) {
  InLab("", [](const NetworkLab& lab) {
    const std::string config = "10.9.0.7/24 fd00:9::7/64";
    Write(config);
    Network().WriteIpv4Gateway(ip4("10.9.0.1"));
    Network().WriteIpv6Enabled(true);
    EXPECT_FALSE(Files().Exists("/etc/sysctl.d/zz-kiva-ipv6.conf")) << "it is on";
    Network().WriteIpv6Enabled(false);
    EXPECT_TRUE(HasIpv6("fd00:9::7/64")) << "until the next start";
    EXPECT_FALSE(Nic().configured.GetIpv6Enabled());
    Write(config);
    const auto start = [&] {
      ASSERT_TRUE(shell(
          "sysctl -q -w net.ipv6.conf.all.disable_ipv6=0 net.ipv6.conf.default.disable_ipv6=0;"
          "sysctl -q -p /etc/sysctl.d/zz-kiva-ipv6.conf"));
      lab.StartAfresh();
      ASSERT_TRUE(Becomes("10.9.0.7 255.255.255.0 10.9.0.1 static"));
    };
    start();
    EXPECT_TRUE(Nic().running.GetIpv6Networks().empty());
    EXPECT_FALSE(Nic().running.GetIpv6Enabled());
    EXPECT_EQ(Nic().configured.GetStaticIpv6Networks(), ipConfig(config).GetStaticIpv6Networks());

    Network().WriteIpv6Enabled(true);
    start();
    EXPECT_TRUE(waitUntil([] { return HasIpv6("fd00:9::7/64"); })) << "as it was before";
    ASSERT_TRUE(
        shell("echo quiet ipv6.disable=1 > /run/cmdline; mount --bind /run/cmdline /proc/cmdline"));
    EXPECT_EQ(failureOf([&] { Network().WriteIpv6Enabled(true); }),
              "SetTarnIpv6Enabled IPv6: the kernel was started with ipv6.disable=1");
  });
}

TEST_F(LinuxIp, LeasesAreRenewedAndGivenBack) {
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
    EXPECT_NE(failureOf([] { Network().SetNicUp(kNic, true); }).find("the system bus: "),
              std::string::npos);
    EXPECT_EQ(ended("cat /sys/class/net/eth0/flags").output, "0x1003\n") << "up all the same";
  });
}

TEST_F(LinuxIp, AReleaseIsOfOneInterface) {
  InLab("dhcp4", [](const NetworkLab& lab) {
    lab.Configure("50-all.network", "[Match]\nName=eth*\n[Network]\nDHCP=ipv4\n");
    lab.StartAfresh();
    const auto leased = [] {
      return waitUntil(
          [] { return ended("ip -4 -br addr show up | grep -c 10.9.0.5").output == "2\n"; });
    };
    ASSERT_TRUE(leased());
    Network().ReleaseLease(kNic);
    EXPECT_TRUE(waitUntil([&] { return lab.Logged("DHCPRELEASE") == 1; }));
    EXPECT_TRUE(leased());
    EXPECT_TRUE(Files().List("/run/systemd/network").empty());
  });
}

TEST_F(LinuxIp, DownAndUpWithAStaticAddress) {
  InLab("", [](const NetworkLab& lab) {
    Write("10.9.0.7/24 off");
    Network().WriteIpv4Gateway(ip4("10.9.0.1"));
    Network().SetNicUp(kNic, false);
    EXPECT_NE(lab.Peer("ping -c 1 -W 1 10.9.0.7").status, 0);
    Network().SetNicUp(kNic, true);
    EXPECT_TRUE(Ipv4().starts_with("10.9.0.7 ")) << "at the return";
    EXPECT_TRUE(Becomes("10.9.0.7 255.255.255.0 10.9.0.1 static"));
    Network().SetNicUp(kNic, false);
    lab.PullCable(0);
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(failureOf([&] { Network().SetNicUp(kNic, true); }),
              "Enable eth0: the link did not come up within 10 seconds");
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(12));
    Write("10.9.0.8/24 off");
    lab.PlugIn(0);
    EXPECT_TRUE(Becomes("10.9.0.8 255.255.255.0 10.9.0.1 static"));
  });
}

TEST_F(LinuxIp, NamesAndServers) {
  InLab("dhcp4", [](const NetworkLab& lab) {
    lab.StartHostnamed();
    Write("10.9.0.7/24 off");
    ASSERT_TRUE(
        shell("printf '# mine\\nnameserver 10.0.0.1\\noptions edns0\\n' >/etc/resolv.conf;"
              "printf '127.0.0.1 localhost\\n127.0.1.1 machine # me\\n' >/etc/hosts"));
    HostSeam::DnsChange change{"alpha",
                               "corp.lan",
                               {{ip4("10.9.0.1"), ip6("fe80::1%eth0")}},
                               {{"corp.lan", "b.lan", "Corp.lan"}}};
    Network().WriteDns(change);
    EXPECT_EQ(ended("cat /etc/resolv.conf /etc/hosts /etc/hostname; hostname").output,
              "# mine\nsearch corp.lan b.lan\nnameserver 10.9.0.1\nnameserver fe80::1%eth0\n"
              "options edns0\n127.0.0.1 localhost\n127.0.1.1\talpha.corp.lan alpha # me\n"
              "alpha.corp.lan\nalpha.corp.lan\n");
    EXPECT_NE(
        Files().Read(kFile).value().find("DNS=10.9.0.1\nDNS=fe80::1%eth0\nDomains=corp.lan\n"),
        std::string::npos);
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

// It gives one up whose link goes and comes too fast for it, and no reload makes it try again.
TEST_F(LinuxIp, WhatNetworkdGaveUpIsTriedAgain) {
  InLab("", [](const NetworkLab&) {
    Write("10.9.0.7/24 off");
    Network().WriteIpv4Gateway(ip4("10.9.0.1"));
    ASSERT_TRUE(
        shell("kill -STOP $(cat /run/lab/networkd.pid); ip link set eth0 down;"
              "ip link set eth0 up; kill -CONT $(cat /run/lab/networkd.pid)"));
    ASSERT_TRUE(waitUntil([] { return shell("networkctl status eth0 | grep -q failed"); }));
    Write("10.9.0.8/24 off");
    EXPECT_EQ(Ipv4(), "10.9.0.8 255.255.255.0 10.9.0.1 static");
  });
}

// What somebody else wrote for networkd stays in force when the first file of ours takes its place.
TEST_F(LinuxIp, AFirstFileGoesOnFromAnothers) {
  InLab("", [](const NetworkLab& lab) {
    ASSERT_TRUE(
        shell("ip link set eth0 up; ip address add 10.9.0.7/24 dev eth0;"
              "ip route add default via 10.9.0.1"));
    Network().WriteIpConfig(kNic, Nic().configured);
    EXPECT_FALSE(Files().Exists(kFile));
    Network().WriteIpv4Gateway(ip4("10.9.0.3"));
    EXPECT_EQ(Ipv4(), "10.9.0.7 255.255.255.0 10.9.0.3 static") << "nobody's before";
    ASSERT_TRUE(shell("rm " + std::string(kFile)));
    lab.Configure("50-all.network",
                  "[Match]\nName=e*0\n[Link]\nMTUBytes=1400\n[Network]\nGateway=10.9.0.1\n"
                  "[Address]\nAddress=10.9.0.7/24\n[Route]\nDestination=10.77.0.0/16\n"
                  "Gateway=10.9.0.2\n");
    ASSERT_TRUE(shell("networkctl reload"));
    ASSERT_TRUE(Becomes("10.9.0.7 255.255.255.0 10.9.0.1 static"));
    Network().WriteIpConfig(kNic, Nic().configured);
    Network().WriteIpv4Gateway(ip4("10.9.0.1"));
    Network().WriteDns({{}, {}, {}, {{"a.lan"}}});
    EXPECT_EQ(LinuxDriver().ReadDns().searchDomains, std::vector<std::string>{"a.lan"});
    EXPECT_FALSE(Files().Exists(kFile));
    Write("10.9.0.8/24 off");
    EXPECT_TRUE(Becomes("10.9.0.8 255.255.255.0 10.9.0.1 static"));
    EXPECT_EQ(ended("ip route show 10.77.0.0/16; cat /sys/class/net/eth0/mtu").output,
              "10.77.0.0/16 via 10.9.0.2 dev eth0 proto static \n1400\n");
  });
}

TEST_F(LinuxIp, NameServersFollowTheLeases) {
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

TEST_F(LinuxIp, RefusedWithEverythingAsItWas) {
  inLab([](const NetworkLab& lab) {
    EXPECT_EQ(failureOf([&] { Network().WriteIpConfig("eth7", ipConfig("dhcp")); }),
              "SetIpConfig eth7: there is no such interface");
    EXPECT_EQ(failureOf([] { Write("dhcp off"); }),
              "SetIpConfig eth0: systemd-networkd does not run");
    EXPECT_FALSE(Files().Exists(kFile));
    lab.StartNetworkd();
    Write("10.9.0.7/24 off");
    const auto before = Files().Read(kFile);
    EXPECT_EQ(failureOf([&] { Network().WriteIpv4Gateway(ip4("10.8.0.1")); }),
              "SetTarnDefaultGateway 10.8.0.1: is in no network of eth0");
    auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(failureOf([] { Write("10.9.0.8/24 fd00:9::1/64"); }),
              "SetIpConfig eth0: systemd-networkd did not set the address fd00:9::1 within 10 "
              "seconds")
        << "it is the peer's";
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(16))
        << "nobody waits for it again";
    EXPECT_EQ(Files().Read(kFile), before);
    EXPECT_TRUE(waitUntil([] { return Ipv4().starts_with("10.9.0.7 "); }));

    ASSERT_TRUE(
        shell("mkdir -p /etc/network/interfaces.d; echo source interfaces.d/* "
              ">/etc/network/interfaces; echo iface eth0 inet dhcp >/etc/network/interfaces.d/a"));
    const std::function<void()> changes[] = {
        [] { Write("dhcp off"); },
        [&] { Network().WriteIpv4Gateway(ip4("10.9.0.1")); },
        [&] { Network().RenewLease(kNic, LeaseRenewal::Ipv4); },
        [&] { Network().ReleaseLease(kNic); },
        [&] { Network().SetNicUp(kNic, false); },
        [&] {
          Network().WriteDns({{}, {}, {{ip4("10.9.0.1")}}, {}});
        }};
    for (const auto& change : changes) {
      const std::string why = failureOf(change);
      EXPECT_NE(why.find(" eth0: is configured by ifupdown (/etc/network/interfaces.d/a)"),
                std::string::npos)
          << why;
    }
    EXPECT_EQ(failureOf([] { Write("10.9.0.7/24 off"); }), "") << "nothing differs";
    ASSERT_TRUE(shell("mv " + std::string(kFile) + " /run/ours"));
    EXPECT_EQ(failureOf([] { Network().WriteIpConfig(kNic, Nic().configured); }), "");
    EXPECT_FALSE(Files().Exists(kFile));
    ASSERT_TRUE(shell("mv /run/ours " + std::string(kFile) + "; rm /etc/network/interfaces"));
    lab.HangBus();
    start = std::chrono::steady_clock::now();
    EXPECT_EQ(failureOf([&] { Network().ReleaseLease(kNic); }),
              "ReleaseLease eth0: the system bus: Connection timed out");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(9));
    lab.StopBus();
    EXPECT_NE(failureOf([] { Write("dhcp off"); }).find("the system bus: "), std::string::npos);
    EXPECT_EQ(Files().Read(kFile), before);
    EXPECT_EQ(ended("ls -A /run/systemd/network/*").output, "");
  });
}

}  // namespace
