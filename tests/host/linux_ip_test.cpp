// SPDX-License-Identifier: MIT
#include "tests/host/linux_ip.h"

using namespace HostLinux;

namespace {

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
        change.ends_with(" off") ? Write(change) : SetGateway(change);
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
    const auto settled = [&](const char* config, bool byDhcp, bool byRouter, const char* gateway) {
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
    SetGateway("fd00:9::1");
    EXPECT_EQ(Gateway6(), "fd00:9::1");
    EXPECT_EQ(failureOf([&] { SetGateway("fe80::9%eth1"); }),
              "SetIpv6TarnDefaultGateway fe80::9%eth1: is in no network of eth0");
    SetGateway("fe80::9%eth0");
    EXPECT_EQ(Gateway6(), "fe80::9%eth0");
    EXPECT_TRUE(settled("none ra fd00:9::7/64", false, true, "fe80::9%eth0"))
        << "an operator's gateway is the only one";
  });
}

TEST_F(LinuxIp, Ipv6OffAtTheNextStart) {
  InLab("", [](const NetworkLab& lab) {
    const std::string config = "10.9.0.7/24 fd00:9::7/64";
    Write(config);
    SetGateway("10.9.0.1");
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

TEST_F(LinuxIp, DownAndUpWithAStaticAddress) {
  InLab("", [](const NetworkLab& lab) {
    Write("10.9.0.7/24 off");
    SetGateway("10.9.0.1");
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
    // networkd gives a link up that goes and comes too fast for it, and no reload has it try again.
    ASSERT_TRUE(
        shell("kill -STOP $(cat /run/lab/networkd.pid); ip link set eth0 down;"
              "ip link set eth0 up; kill -CONT $(cat /run/lab/networkd.pid)"));
    ASSERT_TRUE(waitUntil([] { return shell("networkctl status eth0 | grep -q failed"); }));
    Write("10.9.0.9/24 off");
    EXPECT_EQ(Ipv4(), "10.9.0.9 255.255.255.0 10.9.0.1 static");
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
    SetGateway("10.9.0.3");
    EXPECT_EQ(Ipv4(), "10.9.0.7 255.255.255.0 10.9.0.3 static") << "nobody's before";
    ASSERT_TRUE(shell("rm " + std::string(kFile)));
    lab.Configure("50-all.network",
                  "[Match]\nName=e*0\n[Network]\nGateway=10.9.0.1\n"
                  "[Address]\nAddress=10.9.0.7/24\n[Route]\nDestination=10.77.0.0/16\n"
                  "Gateway=10.9.0.2\n");
    ASSERT_TRUE(
        shell("cd /usr/local/lib; mkdir -p systemd/network/50-all.network.d; printf '[Link]\\n"
              "MTUBytes=1400\\n' >systemd/network/50-all.network.d/a.conf; networkctl reload"));
    ASSERT_TRUE(Becomes("10.9.0.7 255.255.255.0 10.9.0.1 static"));
    Network().WriteIpConfig(kNic, Nic().configured);
    SetGateway("10.9.0.1");
    Network().WriteDns({{}, {}, {}, {{"a.lan"}}});
    EXPECT_EQ(LinuxDriver().ReadDns().searchDomains, std::vector<std::string>{"a.lan"});
    EXPECT_FALSE(Files().Exists(kFile));
    Write("10.9.0.8/24 off");
    EXPECT_TRUE(Becomes("10.9.0.8 255.255.255.0 10.9.0.1 static"));
    EXPECT_EQ(ended("ip route show 10.77.0.0/16; grep MTU " + std::string(kFile)).output,
              "10.77.0.0/16 via 10.9.0.2 dev eth0 proto static \nMTUBytes=1400\n");
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
    EXPECT_EQ(failureOf([&] { SetGateway("10.8.0.1"); }),
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
        [&] { SetGateway("10.9.0.1"); },
        [&] { Network().RenewLease(kNic, HostCtl::Network::LeaseRenewal::Ipv4); },
        [&] { Network().ReleaseLease(kNic); },
        [&] { Network().SetNicUp(kNic, false); },
        [&] {
          Network().WriteDns({{}, {}, {}, {{"a.lan"}}});
        }};
    for (const auto& change : changes)
      EXPECT_PRED_FORMAT2(testing::IsSubstring,
                          " eth0: is configured by ifupdown (/etc/network/interfaces.d/a)",
                          failureOf(change));
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
