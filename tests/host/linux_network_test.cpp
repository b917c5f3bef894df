// SPDX-License-Identifier: MIT
#include <set>

#include "tests/host/linux_ip.h"

using namespace HostLinux;

namespace {

using HostCtl::Network::ConnecteeType;
using HostSeam::KernelNic;

// "fd00::1=static fe80::1=other", in the kernel's order turned to the alphabet's.
std::string ipv6(const KernelNic& from) {
  const char* kNames[] = {"other", "static", "dhcp", "autoconf"};
  std::set<std::string> found;
  for (const auto& network : from.running.GetIpv6Networks())
    if (!network.address.IsLinkLocal())
      found.insert(network.ToString() + "=" + kNames[static_cast<int>(network.type)]);
  std::string text;
  for (const auto& one : found) text += one + " ";
  return text;
}

bool moduleIsLoaded() {
  return Files().Read("/proc/self/maps").value_or("").find("kiva-networkd.so") != std::string::npos;
}

TEST(LinuxNetlink, TablesOfARealKernel) {
  inNamespaces([] {
    ASSERT_TRUE(shell(R"(
      ip link set lo up
      ip link add tarn0 type veth peer name peer0
      ip link set tarn0 up; ip link set peer0 up
      ip addr add 10.1.0.5/20 dev tarn0
      ip addr add 10.2.0.5/24 dev peer0 valid_lft 600 preferred_lft 600
      ip -6 addr add fd00::5/64 dev tarn0 nodad
      ip -6 addr add fd00::6/128 dev tarn0 nodad valid_lft 600 preferred_lft 600
      ip -6 addr add fd00::7/64 dev tarn0 nodad valid_lft 600 preferred_lft 600
      ip route add default via 10.1.0.1 metric 200
      ip route add default via 10.2.0.1 metric 100
      ip route add default via 10.2.0.9 metric 10 table 77
      ip -6 route add default nexthop via fd00::1 dev tarn0 nexthop via fd00::2 dev tarn0)"));
    LinuxDriver driver;
    EXPECT_EQ(nicOf(driver, "lo").name, "");
    const KernelNic ours = nicOf(driver, "tarn0"), peer = nicOf(driver, "peer0");
    EXPECT_TRUE(ours.setUpByKiva);
    EXPECT_FALSE(ours.carriesDefaultRoute);
    EXPECT_TRUE(peer.carriesDefaultRoute);
    EXPECT_EQ(ipv4Text(ours.running), "10.1.0.5 255.255.240.0 10.1.0.1 static");
    EXPECT_EQ(ipv4Text(peer.running), "10.2.0.5 255.255.255.0 10.2.0.1 dhcp");
    EXPECT_EQ(ipv6(ours), "fd00::5/64=static fd00::6/128=dhcp fd00::7/64=autoconf ");
    EXPECT_EQ(ours.connection.type, ConnecteeType::Opaque) << "no file of ours says otherwise";
    EXPECT_EQ(driver.ReadRouting().ipv4Gateway.GetStringAddress(), "10.2.0.1");
    EXPECT_EQ(driver.ReadRouting().ipv6Gateway.GetStringAddress(), "fd00::1");
    ASSERT_TRUE(shell("ip route flush default"));
    EXPECT_TRUE(nicOf(driver, "tarn0").carriesDefaultRoute) << "there is no other";
    ASSERT_TRUE(
        shell("for i in $(seq 1 100); do echo link add a$i type veth peer name b$i; done |"
              " ip -batch -"));
    EXPECT_EQ(driver.ReadKernelNics().size(), 202u) << "many arrive whole";
  });
}

// An IPv4 lease without end looks like a static address in the kernel.
TEST(LinuxNetworkd, SaysWhoGaveAnAddress) {
  inLab([](const NetworkLab& lab) {
    lab.Configure("eth0.network",
                  "[Match]\nName=eth0\n[Network]\nDHCP=yes\nAddress=fd00:9::7/64\n");
    lab.StartNetworkd();
    const auto leased = [](LinuxDriver&& fresh) { return ipv4Text(nicOf(fresh, "eth0").running); };
    ASSERT_TRUE(waitUntil([&] { return leased(LinuxDriver()) == "0.0.0.0 0.0.0.0 0.0.0.0 dhcp"; }));
    lab.Serve("dhcp4 dhcp6 ra", "infinite");
    ASSERT_TRUE(waitUntil(
        [&] { return leased(LinuxDriver()) == "10.9.0.50 255.255.255.0 10.9.0.1 static"; }));
    EXPECT_FALSE(moduleIsLoaded());
    LinuxDriver driver;
    const std::regex wanted(
        "10.9.0.50 255.255.255.0 10.9.0.1 dhcp, fd00:9::216:3eff:fe00:0/64=autoconf "
        "fd00:9::5[0-9]/128=dhcp fd00:9::7/64=static ");
    std::string seen;
    EXPECT_TRUE(waitUntil([&] {
      seen = ipv4Text(nicOf(driver, "eth0").running) + ", " + ipv6(nicOf(driver, "eth0"));
      return std::regex_match(seen, wanted);
    })) << seen;
    EXPECT_TRUE(moduleIsLoaded());

    // A bus daemon that hangs keeps nobody waiting, and the kernel's own facts stay.
    lab.HangBus();
    using Clock = NetworkdReporter::Clock;
    NetworkdReporter reporter;
    EXPECT_TRUE(reporter.Read(Files(), {}).empty());
    const auto before = Clock::now();
    EXPECT_TRUE(reporter.Read(Files(), Clock::time_point(std::chrono::hours(1))).empty());
    const auto waited = Clock::now() - before;
    EXPECT_GE(waited, std::chrono::milliseconds(240));
    EXPECT_LT(waited, std::chrono::seconds(1));
    EXPECT_EQ(leased(LinuxDriver()), "10.9.0.50 255.255.255.0 10.9.0.1 static");
  });
}

}  // namespace
