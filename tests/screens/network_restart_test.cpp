// SPDX-License-Identifier: MIT
// The restart of the management network.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

const Lines kAnnounced = {"log.info\tRestarting tarn0", "log.info\tInitializing evbuser library",
                          "event\t@&!*@*@(evb.user.kiva.network.restart)Restarting tarn0"};
const std::string kRelease = "hostctl\tReleaseLease tarn0", kDisable = "hostctl\tDisable tarn0",
                  kEnable = "hostctl\tEnable tarn0";

void openRestart(Demo& demo) {
  logIn(demo);
  demo.Press("Down", 3);
  demo.Do({"Enter", "wait:Restart management network now?"});
  demo.NewLines();
}

/// The lines of the dialog behind the first, from which they are indented.
Lines toldBy(const Screen& screen) {
  const Position begin = screen.Find("Stopping management network.").value();
  Lines told;
  for (int row = begin.row; row < begin.row + 7; ++row) {
    std::string text;
    for (int column = 0; column < 64; ++column) text += screen.At(row, begin.column + column).text;
    text.erase(text.find_last_not_of(' ') + 1);
    if (!text.empty()) told.push_back(text);
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
  EXPECT_EQ(demo.NewLines(), kAnnounced + kRelease + kDisable + kEnable);
  demo.Do({"Esc", "F11", "type:x", "wait:<Enter> OK", "Enter", "wait:<Enter> Restart"});
}

TEST(NetworkRestart, TellsTheAddressesThatTheInterfaceHasThen) {
  const std::string four = "   IP address is  10.0.0.5", at = "   IP address is fd00::";
  const Lines all = {at + "1/64", at + "2/64", at + "3/64"}, two(all.begin(), all.end() - 1);
  const std::tuple<const char*, int, Lines> cases[] = {{"dhcp", 0, {}},
                                                       {"dhcp", 1, {all[0]}},
                                                       {"none", 2, two},
                                                       {"static", 0, {four}},
                                                       {"static", 3, Lines{four} + all},
                                                       {"static", 4, Lines{four} + two + "   ..."}};
  for (const auto& [mode, networks, addresses] : cases) {
    Demo demo;
    Json list = {{{"address", "fe80::1"}, {"prefix", 64}, {"type", "static"}}};
    for (int i = 1; i <= networks; ++i)
      list += list[0], list[i]["address"] = "fd00::" + std::to_string(i);
    const std::string pointer = "/network/kernelNics/0/configured/";
    demo.host.Set(pointer + "ipv4",
                  {{"mode", mode}, {"address", "10.0.0.5"}, {"netmask", "255.0.0.0"}});
    demo.host.Set(pointer + "ipv6",
                  {{"dhcp", false}, {"routerAdvertisement", false}, {"networks", list}});
    openRestart(demo);
    demo.Do({"F11", "wait:<Enter> OK"});
    const Lines begin = {"Stopping management network. Done.", "Starting management network."};
    EXPECT_EQ(toldBy(demo.Look()), addresses.empty() ? Lines({begin[0], begin[1] + " Done."})
                                                     : begin + addresses + "Done.");
    EXPECT_EQ(demo.NewLines(), (mode == std::string("dhcp") ? kAnnounced + kRelease : kAnnounced) +
                                   kDisable + kEnable);
  }
}

TEST(NetworkRestart, BringsTheInterfaceUpWhateverFails) {
  const std::string fault = "log.err\tout of order";
  const Lines all = {kRelease, kDisable, kEnable};
  const std::tuple<const char*, Lines, const char*, const char*> cases[] = {
      {"ReleaseLease", kAnnounced + fault + kEnable, "Failed.", "Done."},
      {"Disable", kAnnounced + kRelease + fault + kEnable, "Failed.", "Done."},
      {"Enable", kAnnounced + kRelease + kDisable + fault, "Done.", "Failed."},
      {"GetConfiguredIpConfig", Lines{fault} + kAnnounced + all, "Done.", "Done."},
      {"Refresh", kAnnounced + all + fault, "Done.", "Done."},
      {"GetIpConfig", kAnnounced + all + fault, "Done.", "Done."}};
  for (const auto& [operation, lines, stopped, started] : cases) {
    SCOPED_TRACE(operation);
    Demo demo;
    openRestart(demo);
    demo.host.Change(failing(operation, "out of order"));
    demo.Do({"F11", "wait:<Enter> OK"});
    const bool failed = std::string(stopped) + started != "Done.Done.";
    EXPECT_EQ(demo.Look().Shows("Operation on the management network interface failed."), failed);
    if (failed) demo.Do({"Esc", "Enter", "gone:Restart Management Network: Error"});
    const Lines told = toldBy(demo.Look());
    EXPECT_EQ(told[0], "Stopping management network. " + std::string(stopped));
    EXPECT_TRUE(told.back().ends_with(started)) << told.back();
    EXPECT_EQ(demo.NewLines(), lines);
    demo.Do({"Enter", "wait:<Enter> Restart"});
  }
}

TEST(NetworkRestart, TellsWhenTheInterfaceIsGone) {
  Demo demo;
  openRestart(demo);
  demo.host.Set("/network/kernelNics", Json::array());
  const std::string gone = "wait:Management network interface cannot be found.";
  demo.Do({"F11", gone, "Enter", "wait:Starting management network. Failed.", "Enter"});
  demo.Do({"Enter", "wait:Network: Error", gone, "Enter", "Down", "Enter", gone});
}

}  // namespace
