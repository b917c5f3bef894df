// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr Colours kWhiteOnDarkGrey{7, 6}, kBlackOnAmber{0, 3}, kDarkGreyOnAmber{6, 3};
constexpr const char* kDhcpWarning = "Warning: DHCP lookup failed.";

/// A host where one value of the running configuration is another.
Json running(const std::string& path, const Json& value) {
  return networkWith("{\"kernelNics/0/running/" + path + "\": " + value.dump() + "}");
}

Json withIpv6(int count) {
  Json list = Json::array();
  for (int i = count; i > 0; --i)
    list += {{"address", "2001:db8::" + std::to_string(i)}, {"prefix", 64}, {"type", "static"}};
  return running("ipv6/networks", list);
}

TEST(WelcomeScreen, LaysTheHostsFactsOutAtEverySize) {
  for (const Size size : {Size{24, 80}, Size{25, 80}, Size{43, 132}, Size{100, 300}}) {
    Demo demo({}, {.size = size});
    const Screen screen = demo.WaitFor("Corvo Halo 4.2.1 (Tarn 4.2.1 Build 1840271)");
    const int half = size.rows / 2;
    const std::vector<std::pair<std::string, Position>> places = {
        {"Corvo Halo", {5, 8}},
        {"Larkfield Systems Meridian T24", {7, 8}},
        {"2 x Orrery(R) Copper 77 CPU @ 2.60GHz", {9, 8}},
        {"128 GiB Memory", {10, 8}},
        {"To manage this host, go to:", {half + 1, 8}},
        {"https://halo-01/", {half + 2, 8}},
        {"https://10.20.30.40/ (DHCP)", {half + 3, 8}},
        {"https://[2001:db8:20:0:9c3e:41ff:fe07:21a8]/ (AUTOCONF)", {half + 4, 8}},
        {"https://[2001:db8:20::1:7f3a]/ (DHCP)", {half + 5, 8}},
        {"https://[2001:db8:20::40]/ (STATIC)", {half + 6, 8}},
        {"<F2> Customize System/View Logs", {size.rows - 2, 2}},
        {"<F12> Shut Down/Restart", {size.rows - 2, size.columns - 25}}};
    for (const auto& [text, place] : places) EXPECT_EQ(screen.Find(text), place) << text;
    EXPECT_EQ(screen.ColoursAt(5, 8), kWhiteOnDarkGrey);
    EXPECT_EQ(screen.ColoursAt(half - 1, 0), kWhiteOnDarkGrey) << "the frame";
    EXPECT_EQ(screen.ColoursAt(half + 1, 8), kBlackOnAmber);
    EXPECT_EQ(screen.ColoursAt(size.rows - 2, 2), kBlackOnAmber);
    EXPECT_EQ(screen.ColoursAt(size.rows - 2, 7), kDarkGreyOnAmber);
    EXPECT_EQ(screen.Row(0).substr(0, 6), "┌─");
    EXPECT_FALSE(screen.cursorVisible);
  }
}

TEST(WelcomeScreen, FollowsTheHostsState) {
  const Json audit = {{"bootOption", 1}}, noLease = running("ipv4/address", "0.0.0.0");
  Json both = noLease;
  both += {{"op", "replace"}, {"path", "/bootOption"}, {"value", 1}};
  const std::tuple<Json, Lines, Lines> cases[] = {
      {running("ipv4/mode", "static"), {"https://10.20.30.40/ (STATIC)"}, {}},
      {noLease,
       {"https://0.0.0.0/ (Waiting for DHCP...)", "Warning: DHCP lookup failed. You may be",
        "network configuration."},
       {}},
      {running("ipv4/mode", "none"), {"https://halo-01/"}, {"10.20.30.40", "0.0.0.0"}},
      {audit, {"Warning: Host is running in audit mode.", "support."}, {}},
      {both, {"audit mode", "Waiting for DHCP..."}, {kDhcpWarning}},
      {networkWith(R"({"kernelNics": []})"),
       {"https://halo-01/"},
       {kDhcpWarning, "10.20.30.40", "2001:db8"}},
      {networkWith(R"({"pnics": []})"),
       {"No compatible network adapter found. Please consult the"},
       {"https://"}},
      {networkWith(R"({"ipv6Enabled": false})"), {"10.20.30.40"}, {"2001:db8"}},
      {withIpv6(6), {"[2001:db8::3]", "[2001:db8::6]", "..."}, {"db8::1]", "db8::2]"}},
      {withIpv6(5), {"[2001:db8::1]", "[2001:db8::5]"}, {"..."}},
      {networkWith(R"({"dns/hostname": "localhost"})"), {"10.20.30.40"}, {"localhost"}},
      {networkWith(R"({"dns/hostname": "a{b}c"})"), {"https://a(b)c/"}, {}},
      {{{"processors", {{"packages", 1}}}}, {" Orrery(R) Copper"}, {"1 x", "2 x"}},
      {{{"hardware", {{"vendorName", ""}, {"productName", "  Box  1 "}}}},
       {"│       Box 1 "},
       {"Larkfield"}}};
  for (const auto& [changes, shown, hidden] : cases) {
    SCOPED_TRACE(changes);
    const Screen screen = Demo(changes).Look();
    EXPECT_EQ(missingFrom(screen, shown), Lines{}) << screen.Dump();
    EXPECT_EQ(missingFrom(screen, hidden), hidden) << screen.Dump();
  }
}

TEST(WelcomeScreen, WarnsInTheRowsThatTheSizeLeaves) {
  for (const auto& [rows, row] : {std::pair{24, 19}, {25, 20}, {28, 23}, {43, 30}}) {
    const Screen screen = Demo({{"bootOption", 1}}, {.size = {rows, 80}}).Look();
    ASSERT_EQ(screen.Find("Warning: Host is running"), (Position{row, 16})) << screen.Dump();
    EXPECT_EQ(screen.ColoursAt(row, 16), kDarkGreyOnAmber);
  }
}

TEST(WelcomeScreen, AlertsTheHostOnceThatItHasNoAdapter) {
  Demo demo(networkWith(R"({"pnics": []})"));
  demo.Press("Enter", 3);
  EXPECT_EQ(demo.host.Journal("hostctl"),
            Lines{"SetSystemAlert No compatible network adapter found."});
}

TEST(WelcomeScreen, GivesWayToTheAdministratorsMessage) {
  Demo demo(Json{{"welcomeMessage",
                  "{color:yellow}Call "
                  "{align:center}{hostname}{/align}\n{serial-number}{memory}{PLSAversion}"}});
  const Screen screen = demo.Look();
  EXPECT_EQ(screen.Find("Call "), (Position{2, 2}));
  EXPECT_EQ(missingFrom(screen, {"halo-01.example.test", "LKF-T24-00731128 GB12.4.0.6"}), Lines{});
  EXPECT_EQ(screen.ColoursAt(2, 2), (Colours{3, 0}));
  EXPECT_FALSE(screen.Shows("<F2>"));
  demo.host.Change({{"welcomeMessage", ""}});
  demo.Do({"Enter", "wait:<F2> Customize System/View Logs"});
}

TEST(WelcomeScreen, StaysAliveOnATinyTerminal) {
  for (const Size size : {Size{10, 40}, Size{5, 20}, Size{2, 3}, Size{1, 1}}) {
    Demo demo({}, {.size = size});
    EXPECT_EQ(demo.Look().Shows("This screen needs 80 x 24."), size.columns == 40);
    demo.Press("F2");
    EXPECT_EQ(demo.Look().cursorVisible, size.rows == 10);
    EXPECT_EQ(demo.Stop(), 0);
  }
}

}  // namespace
