// SPDX-License-Identifier: MIT
// What the test of the management network computes before it touches anything.
#include <gtest/gtest.h>

#include "hostctl/network/hosts_file.h"
#include "network/test_targets.h"

namespace {

using namespace HostCtl::Network;
using Three = std::array<std::string, 3>;

TEST(NetworkTest, OffersTheGatewaysThenTheNameServers) {
  const std::tuple<const char*, const char*, std::vector<const char*>, bool, Three> cases[] = {
      {"10.0.0.1", "fd00::1", {"10.0.0.2", "10.0.0.3"}, true, {"10.0.0.1", "fd00::1", "10.0.0.2"}},
      {"10.0.0.1", "fd00::1", {"fd00::2", "10.0.0.3"}, false, {"10.0.0.1", "10.0.0.3", ""}},
      {"0.0.0.0", "fe80::1%tarn0", {"0.0.0.0", "::", "fd00::2"}, true, {"fe80::1", "fd00::2", ""}}};
  for (const auto& [ipv4, ipv6, servers, ipv6Enabled, offered] : cases) {
    Kiva::TestFacts facts{
        *Ipv4Address::FromString(ipv4), *Ipv6Address::FromString(ipv6), {}, ipv6Enabled, "", "x"};
    for (const auto& server : servers) facts.nameServers.push_back(*parseIpAddress(server));
    EXPECT_EQ(preparedTargets(facts), (Kiva::TestTargets{offered, ""}));
  }
  EXPECT_EQ(Kiva::preparedTargets({{}, {}, {}, true, "halo", ""}).hostname, "halo");
}

TEST(NetworkTest, GivesAZoneToLinkLocalAddressesOnly) {
  const Three cases[] = {{"10.0.0.1", "tarn0", "10.0.0.1"},
                         {"fec0::1", "tarn0", "fec0::1"},
                         {"febf::1", "br-0.7@a:b_", "febf::1%br-0.7@a:b_"},
                         {"fe80::1", "a;b`$('", "fe80::1%a\\;b\\`\\$\\(\\'"}};
  for (const auto& [address, interface, zoned] : cases)
    EXPECT_EQ(Kiva::withZone(address, interface), zoned);
}

TEST(HostsFile, LosesOneNameAndNothingElse) {
  const std::string others = "# 10.0.0.5 h\n\n  \nh\nh a\n10.0.0.5\n10.0.0.5 h2 ah h.\n";
  const std::array<std::string, 2> cases[] = {
      {"127.0.0.1 localhost\n10.0.0.5 h\n::1 x\n", "127.0.0.1 localhost\n::1 x\n"},
      {"10.0.0.5\th.test  H halo\nfd00::5 a h", "10.0.0.5\th.test halo\nfd00::5 a"},
      {"10.0.0.5 h # h here\n10.0.0.5 a h# h\r\n", "# h here\n10.0.0.5 a# h\r\n"},
      {"10.0.0.5 h h\r\n10.0.0.6 a h\r\n\r\n", "10.0.0.6 a\r\n\r\n"},
      {" \t10.0.0.5 \v h \f b  ", " \t10.0.0.5 \f b  "},
      {others, others},
      {std::string("1.2.3.4 a\0b h\n", 14), std::string("1.2.3.4 a\0b\n", 12)}};
  for (const auto& [text, without] : cases) EXPECT_EQ(withoutHostName(text, "h"), without);
  EXPECT_EQ(withoutHostName(others, ""), others);
}

}  // namespace
