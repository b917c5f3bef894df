// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <sstream>

#include "console/log_table.h"
#include "console/network_summary.h"
#include "console/support_pages.h"
#include "console/welcome_layout.h"

namespace Kiva {
namespace {

TEST(LogForDigit, WalksTheAvailableLogs) {
  using Row = std::optional<std::size_t>;
  const LogFlags some{true, false, true, true, false, true, false};
  const LogFlags all{true, true, true, true, true, true, true};
  const LogFlags none{};
  const std::vector<std::tuple<int, LogFlags, Row>> cases = {
      {1, some, 0}, {2, some, 2}, {4, some, 5}, {5, some, 4}, {9, some, 4},
      {0, some, 4}, {0, none, 0}, {3, none, 0}, {1, all, 0},  {7, all, 6},
      {8, all, {}}, {9, all, {}}, {0, all, {}},
  };
  for (const auto& [digit, flags, row] : cases) EXPECT_EQ(logForDigit(digit, flags), row) << digit;
}

TEST(SupportPages, EndAtDollarsAndSkipComments) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"", {""}},
      {"one\ntwo", {"one\ntwo\n"}},
      {"#no\na\n$\nb\n", {"a\n", "b\n"}},
      {"$\n$x\n", {"", "", ""}},
      {std::string(1 << 20, 'x') + "\n$", {std::string(1 << 20, 'x') + "\n", ""}},
  };
  for (const auto& [file, pages] : cases) {
    std::istringstream stream(file);
    EXPECT_EQ(readSupportPages(stream), pages);
  }
}

TEST(SupportPages, KeepTheirHintsInTheLastRow) {
  const std::vector<std::string> pages = {"a\nb\nc\nd\ne\n", "x {y\nz} w", "last"};
  const std::string hint = "{color:white}<Page Up>/<Page Down>{/color}";
  EXPECT_EQ(supportPageText(pages, 0, 10, 4), "a\nb\nc\n{color:white}<Page Down>{/color}");
  EXPECT_EQ(supportPageText(pages, 1, 10, 4), "x {y\nz} w\n\n\n" + hint);
  EXPECT_EQ(supportPageText(pages, 2, 10, 3), "last\n\n{color:white}<Page Up>{/color}");
  EXPECT_EQ(supportPageText({"alone"}, 0, 10, 3), "alone");
}

TEST(NetworkSummary, LeavesTheDescriptionInSight) {
  using namespace HostCtl::Network;
  IpConfig config;
  config.SetIpv4UseNone(false);
  config.SetIpv4UseDhcp(true);
  std::vector<Ipv6Network> networks;
  for (const char* text : {"2001:db8:aaaa:bbbb:cccc:dddd:eeee:1", "2001:db8::2", "2001:db8::3"})
    networks.push_back({*Ipv6Address::FromString(text), 64, AddressType::Static});
  config.SetIpv6Networks(networks);
  const std::vector<IpAddress> servers = {*parseIpAddress("10.0.0.1"), *parseIpAddress("fe80::1")};
  EXPECT_EQ(networkSummaryText("", config, servers, 60),
            "Hostname\nNot set\nIPv4 Address\nNot set\nNetwork identity acquired from DHCP server\n"
            "IPv6 Addresses\n2001:db8:aaaa:bbbb:cccc:dddd:eeee:1\n2001:db8::2 ...\n"
            "Primary DNS Server\n10.0.0.1\nAlternate DNS Server\nfe80::1");
  const std::string narrow = networkSummaryText("h", config, servers, 20);
  EXPECT_EQ(narrow.find("Alternate"), std::string::npos) << "what does not fit is left out";
}

TEST(WelcomeLayout, NeverDrawsOverItsFooter) {
  for (int lines = 1; lines <= 100; ++lines)
    for (const bool warns : {false, true}) {
      const WelcomeLayout layout = layOutWelcome(80, lines, warns);
      EXPECT_EQ(layout.top.height + layout.bottom.height, lines);
      EXPECT_LE(layout.management.y + layout.management.height, std::max(layout.footer.y, 1))
          << lines;
      if (!warns || lines < 24) continue;
      EXPECT_LE(layout.warning.y + layout.warning.height, layout.footer.y) << lines;
      EXPECT_LE(layout.management.y + layout.management.height, layout.warning.y) << lines;
      EXPECT_GE(layout.warning.height, 3) << lines;
    }
}

}  // namespace
}  // namespace Kiva
