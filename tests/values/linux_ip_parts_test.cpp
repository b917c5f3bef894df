// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "hostseam/domain_name.h"
#include "linux/network/dhcp_release.h"
#include "linux/network/foreign.h"
#include "linux/network/host_name.h"
#include "linux/network/ip_settings.h"
#include "linux/network/ipv6_switch.h"
#include "linux/network/name_settings.h"
#include "linux/resolver.h"

using namespace HostLinux;
using namespace std::string_literals;

namespace {

using HostCtl::Network::parseIpAddress;

TEST(LinuxForeign, NamesWhoConfiguresAnInterface) {
  constexpr const char* kIfupdown = "etc/network/interfaces";
  constexpr const char* kState = "run/systemd/netif/links/7";
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {kIfupdown, "auto lo eth0\niface lo inet loopback\n#iface eth0 inet dhcp\n", ""},
      {kIfupdown, "iface eth00 inet dhcp\niface lo inet loopback\niface\n", ""},
      {kIfupdown, "auto eth0\n  iface eth0 inet6 auto", "ifupdown (/etc/network/interfaces)"},
      {kIfupdown, "iface eth0:1 inet static\n", "ifupdown (/etc/network/interfaces)"},
      {kIfupdown, "source /etc/network/interfaces.d/*.cfg\n",
       "ifupdown (/etc/network/interfaces.d/b.cfg)"},
      {kIfupdown, "source-directory interfaces.d\n", "ifupdown (/etc/network/interfaces.d/b.cfg)"},
      {kIfupdown, "source interfaces.d/*.conf\nsource interfaces\n", ""},
      {"run/NetworkManager/devices/7", "[device]\nmanaged=true\n", "NetworkManager"},
      {"run/NetworkManager/devices/7", "[device]\nmanaged=false\n", ""},
      {"run/NetworkManager/devices/8", "[device]\nmanaged=true\n", ""},
      {kState, "NETWORK_FILE=/run/systemd/network/05-a.network\n",
       "/run/systemd/network/05-a.network"},
      {kState, "NETWORK_FILE=/etc/systemd/network/10-kiva-eth0.network\n", ""},
      {kState, "NETWORK_FILE=/etc/systemd/network/10-netplan-eth0.network\n", ""},
      {kState, "OPER_STATE=off\n", ""}};
  for (const auto& [path, text, manager] : cases) {
    const Harness::TemporaryFolder folder;
    const Files files(folder.Path());
    folder.Write("sys/class/net/eth0/ifindex", "7\n");
    folder.Write("sys/class/net/tarn0/ifindex", "7\n");
    folder.Write("etc/network/interfaces.d/b.cfg",
                 "iface eth0 inet manual\niface tarn0 inet manual\n");
    folder.Write(path, text);
    EXPECT_EQ(foreignManagerOf(files, "eth0"), manager) << text;
    const bool earlier = std::string(manager).ends_with("05-a.network");
    EXPECT_EQ(foreignManagerOf(files, "tarn0"), earlier ? manager : "") << "it is ours: " << text;
  }
}

// What is sent is judged by a real server.
TEST(LinuxDhcpRelease, NeedsAWholeLease) {
  EXPECT_TRUE(parseLease("# c\nADDRESS=10.9.0.50\nSERVER_ADDRESS=10.9.0.1\nCLIENTID=ff0102\n"));
  for (const char* broken : {"", "ADDRESS=10.9.0.50\n", "SERVER_ADDRESS=10.9.0.1\nADDRESS=x\n",
                             "ADDRESS=10.9.0.50\nSERVER_ADDRESS=10.9.0.1\nCLIENTID=f\n",
                             "ADDRESS=10.9.0.50\nSERVER_ADDRESS=10.9.0.1\nCLIENTID=fg\n"})
    EXPECT_FALSE(parseLease(broken)) << broken;
}

TEST(LinuxNames, ResolverFileChangesOnlyWhatDiffers) {
  const auto server = [](const char* text) { return parseIpAddress(text).value(); };
  const std::tuple<const char*, ResolverFile, const char*> cases[] = {
      {"", {}, ""},
      {"", {{server("10.0.0.1")}, {"a", "b"}}, "search a b\nnameserver 10.0.0.1\n"},
      {"# c\nnameserver fe80::1%eth0\noptions x",
       {{server("fe80::1%eth0")}, {}},
       "# c\nnameserver fe80::1%eth0\noptions x"},
      {"# c\nnameserver 10.0.0.1\noptions x\nsearch a\nnameserver 10.0.0.2\n; d",
       {{server("fe80::1%eth0")}, {"a"}},
       "# c\nsearch a\nnameserver fe80::1%eth0\noptions x\n; d\n"},
      {"domain a\nnameserver bad\n#nameserver 10.0.0.9\n", {}, "#nameserver 10.0.0.9\n"}};
  for (const auto& [before, wanted, after] : cases) {
    EXPECT_EQ(withResolver(before, wanted), after);
    EXPECT_EQ(parseResolverFile(after), wanted) << after;
  }
}

TEST(LinuxNames, NameAndHostsFileAfterAChange) {
  using Text = std::optional<std::string>;
  const std::tuple<const char*, Text, Text, const char*> names[] = {
      {"alpha.corp.lan", "beta", {}, "beta.corp.lan"},
      {"alpha", "beta", {}, "beta"},
      {"alpha.corp.lan", "beta", "x.lan", "beta.x.lan"},
      {"alpha.corp.lan", {}, "", "alpha"},
      {"alpha.corp.lan", "b.c", {}, "b.c"},
      {"alpha", {}, "x", "alpha.x"}};
  for (const auto& [before, host, domain, after] : names)
    EXPECT_EQ(nameAfter(before, {host, domain, {}, {}}), after) << before;
  const std::tuple<const char*, const char*, const char*, const char*> hosts[] = {
      {"127.0.1.1 a.lan a\n::1 a", "a.lan", "b.org", "127.0.1.1\tb.org b\n::1 a"},
      {"127.0.1.1\ta # me\n10.0.0.1 a\n", "a", "b.org", "127.0.1.1\tb.org b # me\n10.0.0.1 a\n"},
      {"127.0.1.1 a.lan a www\n", "a.lan", "b", "127.0.1.1\tb www\n"},
      {"127.0.1.1  other\n#127.0.1.1 a\n", "a", "b", "127.0.1.1  other\n#127.0.1.1 a\n"}};
  for (const auto& [before, from, to, after] : hosts)
    EXPECT_EQ(withRenamedHost(before, from, to), after);
}

TEST(LinuxNames, RefusesWhatIsNoName) {
  const Harness::TemporaryFolder folder;
  folder.Write("etc/hostname", "alpha\n");
  const Files files(folder.Path());
  const auto why = [&](const HostSeam::DnsChange& change) {
    return failureOf([&] { writeDns(files, change); });
  };
  for (const auto& name : {""s, ".lan"s})
    EXPECT_EQ(why({name, "", {}, {}}), "SaveConfig " + name + ": is no host name");
  const std::string label(63, 'a'), name = label + "." + label + "." + label + ".";
  for (const auto& domain : {"a..b"s, "-x"s, "a.-"s, ""s, "."s, "a/b"s, "\xc3\xa4"s, label + "a",
                             name + label, std::string(300, 'a')})
    EXPECT_EQ(why({{}, {}, {}, {{"a", domain}}}), "SaveConfig " + domain + ": is no domain name");
  for (const auto& domain : {"a"s, "_x.B-1.lan."s, name + label.substr(2)})
    EXPECT_TRUE(HostSeam::isDomainName(domain)) << domain;
}

TEST(LinuxIpSettings, RefusesAddressesThatMeanSomethingElse) {
  constexpr const char* kOwn = "etc/systemd/network/10-kiva-eth0.network";
  const Harness::TemporaryFolder folder;
  folder.Write("sys/class/net/eth0/ifindex", "7\n");
  folder.Write("proc/sys/net/ipv6/conf/all/disable_ipv6", "0");
  folder.Write(kOwn, "[Match]\nName=eth0\n");
  const Files files(folder.Path());
  for (const std::string address :
       {"0.0.0.0", "224.0.0.1", "239.9.9.9", "255.255.255.255", "::", "ff02::1", "fe80::7%eth0"})
    EXPECT_EQ(failureOf([&] { writeIpConfig(files, "eth0", ipConfig("dhcp " + address + "/24")); }),
              "SetIpConfig " + address + ": is no address of an interface");
  EXPECT_EQ(files.Read("/" + std::string(kOwn)), "[Match]\nName=eth0\n");
}

TEST(LinuxIpv6Switch, TheNextStartCounts) {
  const std::tuple<const char*, const char*, const char*, bool> cases[] = {
      {"quiet", "0", "", true},
      {"quiet", "1", "", false},
      {"quiet", "1", "net.ipv6.conf.all.disable_ipv6 = 0\n", true},
      {"quiet", "0", "net.ipv6.conf.all.disable_ipv6 = 1\n", false},
      {"quiet ipv6.disable=1 x", "0", "net.ipv6.conf.all.disable_ipv6 = 0\n", false}};
  for (const auto& [options, running, file, on] : cases) {
    const Harness::TemporaryFolder folder;
    folder.Write("proc/cmdline", options);
    folder.Write("proc/sys/net/ipv6/conf/all/disable_ipv6", running);
    if (*file) folder.Write(std::string(kIpv6SwitchFile).substr(1), file);
    EXPECT_EQ(ipv6ToBeOn(Files(folder.Path())), on) << options << running << file;
  }
  const std::string all = "net.ipv6.conf.all.disable_ipv6", other = "net.ipv6.conf.default.",
                    text = "# mine\n" + all + " = 1\nvm.swappiness = 1\n" + other;
  EXPECT_EQ(withIpv6Switch(text + "disable_ipv6 = 1\n", false), text + "disable_ipv6 = 1\n");
  EXPECT_EQ(withIpv6Switch(text + "forwarding = 1\n", true),
            "# mine\n" + all + "=0\nvm.swappiness = 1\n" + other + "forwarding = 1\n" + other +
                "disable_ipv6=0\n");
}

}  // namespace
