// SPDX-License-Identifier: MIT
// What the restart and the test of the management network compute before they touch anything.
#include <gtest/gtest.h>

#include "hostctl/network/hosts_file.h"
#include "network/do_restart_network_dialog.h"
#include "network/test_targets.h"

namespace {

using namespace HostCtl::Network;

TEST(NetworkTest, OffersTheGatewaysThenTheNameServers) {
  using Texts = std::vector<std::string>;
  const struct {
    std::string ipv4Gateway, ipv6Gateway;
    Texts nameServers;
    bool ipv6;
    std::array<std::string, 3> offered;
  } cases[] = {
      {"10.0.0.1", "fd00::1", {"10.0.0.2", "10.0.0.3"}, true, {"10.0.0.1", "fd00::1", "10.0.0.2"}},
      {"10.0.0.1", "fd00::1", {"fd00::2", "10.0.0.3"}, false, {"10.0.0.1", "10.0.0.3", ""}},
      {"0.0.0.0", "fe80::1%tarn0", {"0.0.0.0", "::", "fd00::2"}, true, {"fe80::1", "fd00::2", ""}},
      {"0.0.0.0", "::", {}, true, {"", "", ""}},
      {"0.0.0.0",
       "::",
       {"10.0.0.1", "10.0.0.1", "10.0.0.2", "10.0.0.3"},
       true,
       {"10.0.0.1", "10.0.0.1", "10.0.0.2"}}};
  for (const auto& one : cases) {
    Kiva::TestFacts facts{*Ipv4Address::FromString(one.ipv4Gateway),
                          *Ipv6Address::FromString(one.ipv6Gateway),
                          {},
                          one.ipv6,
                          "",
                          ""};
    for (const auto& server : one.nameServers) facts.nameServers.push_back(*parseIpAddress(server));
    EXPECT_EQ(preparedTargets(facts).addresses, one.offered) << one.ipv4Gateway << one.ipv6Gateway;
  }
  const std::array<std::string, 3> names[] = {{"halo", "example.test", "halo.example.test"},
                                              {"halo", "", "halo"},
                                              {"", "example.test", ""}};
  for (const auto& [hostname, domain, offered] : names)
    EXPECT_EQ(Kiva::preparedTargets({{}, {}, {}, true, hostname, domain}).hostname, offered);
}

TEST(NetworkTest, GivesAZoneToLinkLocalAddressesOnly) {
  const std::array<std::string, 3> cases[] = {
      {"10.0.0.1", "tarn0", "10.0.0.1"},     {"fd00::1", "tarn0", "fd00::1"},
      {"fe80::1", "tarn0", "fe80::1%tarn0"}, {"febf::1", "br-0.7@a:b_", "febf::1%br-0.7@a:b_"},
      {"fec0::1", "tarn0", "fec0::1"},       {"fe80::1", "a;b`$('", "fe80::1%a\\;b\\`\\$\\(\\'"}};
  for (const auto& [address, interface, zoned] : cases)
    EXPECT_EQ(Kiva::withZone(address, interface), zoned);
}

TEST(NetworkRestart, ShowsTwoIpv6NetworksOrAllThree) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{}, ""},
      {{"fe80::1/64"}, ""},
      {{"fe80::1/64", "fd00::1/64"}, "   at fd00::1/64\n"},
      {{"fd00::1/64", "fd00::2/128"}, "   at fd00::1/64\n   at fd00::2/128\n"},
      {{"fd00::1/64", "fe80::1/64", "fd00::2/64", "fd00::3/64"},
       "   at fd00::1/64\n   at fd00::2/64\n   at fd00::3/64\n"},
      {{"fd00::1/64", "fd00::2/64", "fd00::3/64", "fd00::4/64"},
       "   at fd00::1/64\n   at fd00::2/64\n   ...\n"}};
  for (const auto& [networks, lines] : cases) {
    IpConfig running;
    running.SetIpv4Address(Ipv4Address(0x0a000005));
    std::vector<Ipv6Network> all;
    for (const auto& network : networks) all.push_back(*Ipv6Network::FromString(network));
    running.SetIpv6Networks(all);
    EXPECT_EQ(Kiva::restartedAddresses(running, false, "at "), lines.empty() ? "" : "\n" + lines);
    EXPECT_EQ(Kiva::restartedAddresses(running, true, "at "), "\n   at  10.0.0.5\n" + lines);
  }
}

TEST(HostsFile, LosesOneNameAndNothingElse) {
  const std::array<std::string, 2> cases[] = {
      {"127.0.0.1 localhost\n10.0.0.5 halo\n::1 x\n", "127.0.0.1 localhost\n::1 x\n"},
      {"10.0.0.5\thalo.test  HALO h\n", "10.0.0.5\thalo.test h\n"},
      {"10.0.0.5 halo HaLo\nfd00::5 a halo", "fd00::5 a"},
      {"10.0.0.5 halo # halo here\n", "# halo here\n"},
      {"10.0.0.5 a halo# halo\r\n", "10.0.0.5 a# halo\r\n"},
      {"10.0.0.5 halo\r\n10.0.0.6 a halo\r\n\r\n", "10.0.0.6 a\r\n\r\n"},
      {" \t10.0.0.5 \v halo \f b  ", " \t10.0.0.5 \f b  "},
      {"10.0.0.5 halo", ""},
      {"# 10.0.0.5 halo\n\n  \nhalo\nhalo a\n10.0.0.5\n10.0.0.5 halo2 ahalo halo.\n", ""},
      {"", ""},
      {"\n\n", ""},
      {std::string("10.0.0.5 a\0b halo\n", 18), std::string("10.0.0.5 a\0b\n", 13)}};
  for (const auto& [text, without] : cases) {
    const bool same = without.empty() && text != "10.0.0.5 halo";
    EXPECT_EQ(withoutHostName(text, "halo"), same ? text : without);
  }
  EXPECT_EQ(withoutHostName("10.0.0.5 a  \n", ""), "10.0.0.5 a  \n");
}

}  // namespace
