// SPDX-License-Identifier: MIT
// The restart of the management network.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr const char* kQuestion = "Restart management network now?";
const Lines kAnnounced = {"log.info\tRestarting tarn0", "log.info\tInitializing evbuser library",
                          "event\t@&!*@*@(evb.user.kiva.network.restart)Restarting tarn0"};
const Lines kRestarted = {"hostctl\tReleaseLease tarn0", "hostctl\tDisable tarn0",
                          "hostctl\tEnable tarn0"};

void openRestart(Demo& demo) {
  logIn(demo);
  demo.Press("Down", 3);
  demo.Do({"Enter", std::string("wait:") + kQuestion});
  demo.NewLines();
}

/// What the dialog tells, line by line.
std::string toldBy(const Screen& screen) {
  std::string told;
  const Position begin = screen.Find("Stopping").value();
  const int end = screen.Find("<Enter> OK").value().row;
  for (int row = begin.row; row < end; ++row) {
    std::string text;
    for (int column = 0; column < 64; ++column) text += screen.At(row, begin.column + column).text;
    text.erase(text.find_last_not_of(' ') + 1);
    if (!text.empty()) told += text + "\n";
  }
  return told;
}

TEST(NetworkRestart, HappensOnF11Alone) {
  Demo demo;
  openRestart(demo);
  const Screen before = demo.Look();
  demo.Do({"Enter", "Down", "type:yY ", "F2"});
  EXPECT_EQ(demo.Look(), before);
  demo.Do({"Esc", "gone:Restart management network now?"});
  EXPECT_EQ(demo.NewLines(), Lines{});
  demo.Do({"Enter", "F11", "wait:<Enter> OK"});
  EXPECT_EQ(demo.NewLines(), kAnnounced + kRestarted);
  demo.Do({"Esc", "F11", "type:x", "wait:<Enter> OK", "Enter", "gone:<Enter> OK"});
  EXPECT_TRUE(demo.Look().Shows("<Enter> Restart"));
}

/// A static interface with so many IPv6 networks, or one on DHCP that gets nothing but these.
Json configured(const char* mode, int networks) {
  Json changes = Json::array();
  const auto set = [&](const std::string& key, const Json& value) {
    changes.push_back({{"op", "add"}, {"path", "/network/kernelNics/0/" + key}, {"value", value}});
  };
  Json list = Json::array({{{"address", "fe80::1"}, {"prefix", 64}, {"type", "static"}}});
  for (int i = 1; i <= networks; ++i)
    list.push_back({{"address", "fd00::" + std::to_string(i)}, {"prefix", 64}, {"type", "static"}});
  set("configured/ipv4", {{"mode", mode}, {"address", "10.0.0.5"}, {"netmask", "255.0.0.0"}});
  set("configured/ipv6", {{"dhcp", false}, {"routerAdvertisement", false}, {"networks", list}});
  return changes;
}

TEST(NetworkRestart, TellsTheAddressesThatTheInterfaceHasThen) {
  const std::string stopped = "Stopping management network. Done.\nStarting management network.";
  const std::string four = "   IP address is  10.0.0.5\n", at = "   IP address is fd00::";
  const std::tuple<const char*, int, std::string> cases[] = {
      {"dhcp", 0, " Done.\n"},
      {"dhcp", 1, "\n" + at + "1/64\nDone.\n"},
      {"none", 2, "\n" + at + "1/64\n" + at + "2/64\nDone.\n"},
      {"static", 0, "\n" + four + "Done.\n"},
      {"static", 3, "\n" + four + at + "1/64\n" + at + "2/64\n" + at + "3/64\nDone.\n"},
      {"static", 4, "\n" + four + at + "1/64\n" + at + "2/64\n   ...\nDone.\n"}};
  for (const auto& [mode, networks, told] : cases) {
    Demo demo(configured(mode, networks));
    openRestart(demo);
    demo.Do({"F11", "wait:<Enter> OK"});
    EXPECT_EQ(toldBy(demo.Look()), stopped + told);
    const bool leased = std::string(mode) == "dhcp";
    EXPECT_EQ(demo.NewLines(),
              kAnnounced + (leased ? kRestarted : Lines(kRestarted.begin() + 1, kRestarted.end())));
  }
}

TEST(NetworkRestart, BringsTheInterfaceUpWhateverFails) {
  const std::string fault = "log.err\tout of order";
  const std::string failedStop =
      "Stopping management network. Failed.\nStarting management network.";
  const std::string done = "Stopping management network. Done.\nStarting management network.";
  const Lines up = {"hostctl\tEnable tarn0"};
  const std::tuple<const char*, Lines, std::string, const char*> cases[] = {
      {"ReleaseLease", Lines{fault} + up, failedStop, "Done.\n"},
      {"Disable", Lines{kRestarted[0], fault} + up, failedStop, "Done.\n"},
      {"Enable", {kRestarted[0], kRestarted[1], fault}, done, "Failed.\n"}};
  for (const auto& [operation, lines, begin, end] : cases) {
    SCOPED_TRACE(operation);
    Demo demo;
    openRestart(demo);
    demo.host.Change(failing(operation, "out of order"));
    demo.Do({"F11", "wait:Restart Management Network: Error"});
    EXPECT_TRUE(demo.Look().Shows("Operation on the management network interface failed."));
    EXPECT_EQ(demo.NewLines(), kAnnounced + lines);
    demo.Do({"Esc", "Enter", "gone:Error"});
    const std::string told = toldBy(demo.Look());
    EXPECT_TRUE(told.starts_with(begin)) << told;
    EXPECT_TRUE(told.ends_with(end)) << told;
    demo.Do({"Enter", "wait:<Enter> Restart"});
  }
}

TEST(NetworkRestart, GoesOnWithoutWhatTheHostDoesNotTell) {
  const char* reads[] = {"GetConfiguredIpConfig", "Refresh", "GetIpConfig"};
  for (const char* read : reads) {
    Demo demo;
    openRestart(demo);
    demo.host.Change(failing(read, "no answer"));
    demo.Do({"F11", "wait:<Enter> OK"});
    EXPECT_TRUE(toldBy(demo.Look()).ends_with("Done.\n"));
    EXPECT_TRUE(demo.HasLine("log.err", "no answer"));
    EXPECT_TRUE(demo.HasLine("hostctl", "Enable tarn0"));
  }
  Demo demo(Json{{"eventLibraryStatus", 7}});
  openRestart(demo);
  demo.Do({"F11", "wait:<Enter> OK"});
  const Lines unheard = {"log.err\tUnable to initialize evbuser library from KIVA. Error code: 7"};
  EXPECT_EQ(demo.NewLines(),
            Lines(kAnnounced.begin(), kAnnounced.end() - 1) + unheard + kRestarted);
}

TEST(NetworkRestart, TellsWhenTheInterfaceIsGone) {
  Demo demo;
  openRestart(demo);
  demo.host.Set("/network/kernelNics", Json::array());
  demo.Do(
      {"F11", "wait:Management network interface cannot be found.", "Enter", "wait:<Enter> OK"});
  EXPECT_TRUE(toldBy(demo.Look()).ends_with("Failed.\n"));
  demo.Do({"Enter", "gone:<Enter> OK", "Enter", "wait:Restart Management Network: Error"});
  EXPECT_TRUE(demo.Look().Shows("Management network interface cannot be found."));
}

}  // namespace
