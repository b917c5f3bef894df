// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/hosts/machine.h"
#include "linux/network/dns_file.h"
#include "linux/network/interface_file.h"
#include "linux/network/ip_file.h"

using namespace HostLinux;

namespace {

using HostCtl::Network::IpConfig;
using HostCtl::Network::Ipv4Address;

// Every configuration that the console can ask for is read back as it was written, over every other
// one, and written again it changes no byte.
TEST(LinuxIpFile, GivesBackWhatItWasGiven) {
  std::vector<std::string> all;
  for (const char* ipv4 : {"none", "dhcp", "10.9.0.7/24"})
    for (const char* ipv6 : {"", "ra", "dhcp6", "ra dhcp6"})
      for (const char* networks : {"", " fd00::1/64 fd00:1::1/128"})
        all.push_back(std::string(ipv4) + " " + ipv6 + networks);
  for (const auto& before : all)
    for (const auto& after : all)
      for (const auto half : {Ipv6Half::InForce, Ipv6Half::Kept}) {
        IniFile file;
        setIpConfig(file, "tarn0", ipConfig(before), half);
        const bool dhcp = after.find("dhcp") != after.npos;
        IpConfig wanted = ipConfig(after + (dhcp && half == Ipv6Half::InForce ? " dns" : ""));
        setIpConfig(file, "tarn0", wanted, half);
        const std::string text = file.Text();
        setIpConfig(file, "tarn0", wanted, half);
        EXPECT_EQ(file.Text(), text);
        if (half == Ipv6Half::Kept) {
          EXPECT_EQ(ipConfigIn(file), ipConfig(after + " off")) << text;
          setIpv6Half(file, Ipv6Half::InForce);
        }
        EXPECT_EQ(ipConfigIn(file), wanted) << file.Text();
      }
}

TEST(LinuxIpFile, SaysToNetworkdWhatIsMeant) {
  using enum Ipv6Half;
  const std::tuple<const char*, Ipv6Half, std::vector<const char*>> cases[] = {
      {"none", InForce, {"DHCP=no", "IPv6AcceptRA=no", "LinkLocalAddressing=ipv6"}},
      {"dhcp dns", InForce, {"DHCP=ipv4", "IPv6AcceptRA=no", "UseHostname=yes", "UseDNS=yes"}},
      {"dhcp ra", InForce, {"DHCPv6Client=no", "UseAutonomousPrefix=yes", "UseDNS=no"}},
      {"none dhcp6",
       InForce,
       {"DHCP=ipv6", "WithoutRA=solicit", "IPv6AcceptRA=yes", "UseAutonomousPrefix=no"}},
      {"dhcp dhcp6 fd00::1/64",
       Kept,
       {"DHCP=ipv4", "IPv6AcceptRA=no", "LinkLocalAddressing=no", "[X-Kiva-IPv6]\nAddress=fd00:"}}};
  for (const auto& [given, half, lines] : cases) {
    IniFile file;
    setIpConfig(file, "tarn0", ipConfig(given), half);
    const std::string text = file.Text();
    for (const auto* line : lines) EXPECT_NE(text.find(line), text.npos) << line << " in " << text;
  }
}

TEST(LinuxIpFile, GatewaysStayWhereTheyAreReached) {
  const std::tuple<const char*, const char*, const char*, const char*, const char*> cases[] = {
      {"10.9.0.7/24", "10.9.0.1", "10.9.0.8/24", "10.9.0.1", "::"},
      {"10.9.0.7/24", "10.9.0.1", "10.8.0.8/24", "0.0.0.0", "::"},
      {"10.9.0.7/24", "10.9.0.1", "10.9.0.8/30", "0.0.0.0", "::"},
      {"10.9.0.7/24", "10.9.0.1", "dhcp", "0.0.0.0", "::"},
      {"none fd00::5/64", "fd00::1", "none fd00::6/64", "0.0.0.0", "fd00::1"},
      {"none fd00::5/64", "fd00::1", "none fd00:1::6/64", "0.0.0.0", "::"},
      {"none fd00::5/64", "fd00::1", "none ra", "0.0.0.0", "fd00::1"},
      {"none fd00::5/64", "fe80::1", "none", "0.0.0.0", "fe80::1%tarn0"}};
  for (const auto& [before, gateway, after, ipv4, ipv6] : cases) {
    IniFile file;
    setIpConfig(file, "tarn0", ipConfig(before), Ipv6Half::InForce);
    std::visit([&](const auto& address) { setGateway(file, address); },
               HostCtl::Network::parseIpAddress(gateway).value());
    setIpConfig(file, "tarn0", ipConfig(after), Ipv6Half::InForce);
    const IpConfig read = ipConfigIn(file);
    EXPECT_EQ(read.GetIpv4Gateway().GetStringAddress(), ipv4) << before << ", " << after;
    EXPECT_EQ(read.GetIpv6Gateway().GetScopedAddress(), ipv6) << before << ", " << after;
    const bool alone = std::string(ipv6) != "::";
    EXPECT_EQ(file.Get("IPv6AcceptRA", "UseGateway").has_value(), alone) << after;
  }
}

TEST(LinuxIpFile, KeepsWhatIsNotOurs) {
  const char* kForeign =
      "[Match]\nName=tarn0\nPath=pci*\n[Network]\nAddress=10.9.0.7/24 \nAddress=0.0.0.0/0\nNTP=x\n"
      "Gateway=_dhcp4\nDNS=10.0.0.1 fe80::1%tarn0\nDNS=10.0.0.2:53\nDomains=~. a.lan\n"
      "[Address]\nAddress=10.9.0.9/24\n";
  IniFile file(kForeign);
  setResolver(file, nameServersIn(file), {"a.lan"});
  EXPECT_EQ(file.Text(), kForeign) << "nothing differs";
  setIpConfig(file, "tarn0", ipConfig("dhcp"), Ipv6Half::InForce);
  setResolver(file, {Ipv4Address(0x0a000003)}, {"b.lan"});
  for (const char* kept : {"Path=pci*", "NTP=x", "Address=0.0.0.0/0", "Gateway=_dhcp4",
                           "Domains=~.", "[Address]\nAddress=10.9.0.9/24"})
    EXPECT_NE(file.Text().find(kept), std::string::npos) << kept << " in " << file.Text();
  EXPECT_EQ(file.Get("Network", "DNS"), "10.0.0.3");
  EXPECT_TRUE(ipConfigIn(file).GetIpv4UseDhcp());
  setIpConfig(file, "tarn0", ipConfig("dhcp dns"), Ipv6Half::InForce);
  EXPECT_TRUE(nameServersIn(file).empty()) << "the lease's own are meant";
}

TEST(LinuxIpFile, AdoptsWhatSomebodyElseWrote) {
  const std::string address = "[Address]\nAddress=10.9.0.7/24\n",
                    route = "[Route]\nGateway=10.9.0.1\n", fixed = "10.9.0.7 255.255.255.0 ";
  const std::tuple<std::string, bool, std::string> cases[] = {
      {address + route, true, fixed + "10.9.0.1 static"},
      {address + route + "Destination=0.0.0.0/0\n", true, fixed + "10.9.0.1 static"},
      {address + route + "Destination=10.0.0.0/8\n", true, fixed + "0.0.0.0 static"},
      {address + route + "Metric=7\n", true, fixed + "0.0.0.0 static"},
      {address + "Label=x\n", false, "none"},
      {"[Network]\nAddress=0.0.0.0/24\n", false, "0.0.0.0 255.255.255.0 0.0.0.0 static"},
      {"[Network]\nAddress=::/64\n", false, "none"}};
  for (const auto& [text, understood, ipv4] : cases) {
    const IniFile file = adoptedFile("# c\n[Match]\nName=e*\n" + text, "eth0");
    EXPECT_EQ(isUnderstood(file), understood) << text;
    EXPECT_EQ(ipv4Text(ipConfigIn(file)), ipv4) << text;
    EXPECT_EQ(file.Get("Match", "Name"), "eth0");
  }
}

}  // namespace
