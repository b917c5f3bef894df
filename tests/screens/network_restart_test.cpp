// SPDX-License-Identifier: MIT
// The restart of the management network.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include "harness/demo.h"
#include "hostctl/lib/descriptor.h"

using namespace Harness;

namespace {

const Lines kAnnounced = announced("network.restart", "Restarting tarn0");
const std::string kRelease = "hostctl\tReleaseLease tarn0", kDisable = "hostctl\tDisable tarn0",
                  kEnable = "hostctl\tEnable tarn0", kStart = "Starting management network.";

void openRestart(Demo& demo) {
  openMenu(demo, 3);
  demo.Do({"Enter", "wait:Restart management network now?"});
  demo.NewLines();
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
  const std::string at = "   IP address is fd00::";
  const Lines four = {"   IP address is  10.0.0.5 "}, two = {at + "1/64 ", at + "2/64 "};
  const std::tuple<const char*, int, Lines> cases[] = {{"dhcp", 0, {}},
                                                       {"none", 2, two},
                                                       {"static", 0, four},
                                                       {"static", 3, four + two + (at + "3/64 ")},
                                                       {"dhcp", 4, two + "   ... "}};
  for (const auto& [mode, networks, addresses] : cases) {
    Demo demo;
    Json list = {{{"address", "fe80::1"}, {"prefix", 64}, {"type", "static"}}};
    for (int i = 1; i <= networks; ++i)
      list += list[0], list[i]["address"] = "fd00::" + std::to_string(i);
    const std::string set = "/network/kernelNics/0/configured/ipv";
    demo.host.Set(set + "4", {{"mode", mode}, {"address", "10.0.0.5"}, {"netmask", "255.0.0.0"}});
    demo.host.Set(set + "6", {{"dhcp", false}, {"routerAdvertisement", false}, {"networks", list}});
    openRestart(demo);
    const Screen screen = (demo.Press("F11"), demo.WaitFor("<Enter> OK"));
    EXPECT_EQ(missingFrom(screen, addresses + "Stopping management network. Done. "), Lines{});
    const int rows = static_cast<int>(addresses.size());
    const auto done = screen.Find(rows > 0 ? "│ Done. " : kStart + " Done. ").value();
    EXPECT_EQ(done.row, screen.Find(kStart).value().row + (rows > 0 ? rows + 1 : 0)) << rows;
    EXPECT_EQ(demo.HasLine("hostctl", "ReleaseLease tarn0"), mode == std::string("dhcp"));
  }
}

TEST(NetworkRestart, BringsTheInterfaceUpWhateverFails) {
  const std::string fault = "log.err\tout of order", done = " Done. ", failed = " Failed. ";
  const Lines all = {kRelease, kDisable, kEnable};
  const std::tuple<const char*, Lines, std::string, std::string> cases[] = {
      {"ReleaseLease", kAnnounced + fault + kEnable, failed, done},
      {"Disable", kAnnounced + kRelease + fault + kEnable, failed, done},
      {"Enable", kAnnounced + kRelease + kDisable + fault, done, failed},
      {"GetConfiguredIpConfig", Lines{fault} + kAnnounced + all, done, done},
      {"GetIpConfig", kAnnounced + all + fault, done, done}};
  for (const auto& [operation, lines, stopped, started] : cases) {
    Demo demo;
    openRestart(demo);
    demo.host.Change(failing(operation, "out of order"));
    demo.Do({"F11", "wait:<Enter> OK"});
    if (stopped != started)
      demo.Do({"wait:network interface failed.", "Esc", "Enter", "gone:Network: Error"});
    demo.Do({"wait:Stopping management network." + stopped, "wait:" + started});
    EXPECT_EQ(demo.NewLines(), lines) << operation;
    demo.Do({"Enter", "wait:<Enter> Restart"});
  }
}

TEST(NetworkRestart, DropsWhatIsTypedMeanwhileAndNeedsNoEvents) {
  Demo demo(Json{{"eventLibraryStatus", 7}});
  openRestart(demo);
  {
    const std::string file = demo.host.File().string() + ".lock";
    const HostCtl::Lib::Descriptor lock(open(file.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600));
    ASSERT_EQ(flock(lock.Get(), LOCK_EX), 0) << "a host that takes its time";
    demo.Send(keyBytes("F11"));
    demo.WaitForPassing("Stopping management network.");
    demo.Send("\r\r");
  }
  demo.WaitFor("<Enter> OK");
  EXPECT_EQ(demo.NewLines(),
            Lines({kAnnounced[0], kAnnounced[1],
                   "log.err\tUnable to initialize evbuser library from KIVA. Error code: 7",
                   kRelease, kDisable, kEnable}));
}

TEST(NetworkRestart, TellsWhenTheInterfaceIsGone) {
  Demo demo;
  openRestart(demo);
  demo.host.Set("/network/kernelNics", Json::array());
  const std::string gone = "wait:Management network interface cannot be found.";
  demo.Do({"F11", gone, "Enter", "wait:" + kStart + " Failed.", "Enter"});
  demo.Do({"Enter", "wait:Network: Error", gone, "Enter", "Down", "Enter"});
  demo.Do({"Delete", "type:fe80::1", "Enter", "wait:Pinging address #1 (fe80::1).", "Esc"});
}

}  // namespace
