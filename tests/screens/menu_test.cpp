// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "harness/demo.h"

using namespace Harness;

namespace {

/// The end of a description stands there only when the whole has room.
TEST(Menu, DescribesEveryEntryAtEverySize) {
  const std::pair<const char*, Lines> panes[] = {
      {"Configure Password", {"Set", "To prevent unauthorized", "user.", "<Enter> Change"}},
      {"Configure Lockdown Mode", {"Disabled", "When enabled", "exceptions.", "<Enter> Change"}},
      {"Configure Management Network",
       {"Hostname", "halo-01", "10.20.30.40", "Network identity acquired from DHCP",
        "2001:db8:20::1:7f3a ...", "Primary DNS Server", "2001:db8:20::53", "<Enter>.",
        "<Enter> More"}},
      {"Restart Management Network", {"Restarting the management", "machines.", "<Enter> Restart"}},
      {"Test Management Network", {"To perform a brief network", "hostname.", "<Enter> Run Test"}},
      {"Network Restore Options", {"To view various network", "<Enter>.", "<Enter> Restart"}},
      {"Troubleshooting Options", {"To view various troubleshooting", "Agents.", "<Enter> More"}},
      {"View System Logs",
       {"Press the corresponding key to view", "<1> Syslog", "<2> Tarn", "<3> Config",
        "<4> Management Agent (mgmtd)", "<5> Corvo Halo Observation log"}},
      {"View Support Information", {"LKF-T24-00731", "<Page Down>"}},
      {"Reset System Configuration", {"Warning!", "them.", "<Enter> Reset"}}};
  for (const Size size : {Size{24, 80}, Size{25, 80}, Size{43, 132}}) {
    Demo demo({}, {.size = size});
    logIn(demo);
    const std::size_t half = size.columns / 2;
    for (const auto& [entry, texts] : panes) {
      const Screen screen = demo.Look();
      SCOPED_TRACE(screen.Dump());
      EXPECT_NE(screen.Row(1).find(entry, half), std::string::npos);
      EXPECT_EQ(missingFrom(screen, texts), Lines{});
      EXPECT_EQ(screen.Find("<Up/Down> Select"), (Position{size.rows - 3, 2}));
      EXPECT_EQ(screen.Find("<Esc> Log Out").value().row, size.rows - 3);
      EXPECT_TRUE(screen.Shows("Corvo Halo 4.2.1 (Tarn 4.2.1 Build 1840271)"));
      demo.Press("Down");
    }
    EXPECT_TRUE(demo.Look().Shows("<Enter> Reset")) << "the last entry stays";
  }
}

TEST(Menu, WearsItsColours) {
  Demo demo;
  logIn(demo);
  const Screen screen = demo.Look();
  const Colours bright{0, 3}, help{6, 3}, dark{7, 6}, plain{2, 6};
  const std::pair<Position, Colours> cells[] = {
      {{4, 2}, {7, 0}}, {{5, 2}, bright},  {{1, 3}, bright},  {{1, 42}, dark},
      {{4, 42}, dark},  {{6, 42}, plain},  {{21, 2}, bright}, {{21, 12}, help},
      {{21, 41}, dark}, {{21, 50}, plain}, {{23, 20}, {2, 0}}};
  for (const auto& [place, colours] : cells)
    EXPECT_EQ(screen.ColoursAt(place.row, place.column), colours) << place.row << place.column;
  EXPECT_EQ(screen.Row(2).substr(3, 6), "──");
}

TEST(Menu, SkipsWhatTheHostDoesNotOffer) {
  const Json agentRefuses = {{"/bin/hmx-cmd", {{"status", 3}, {"stdout", "true"}}}};
  const std::pair<Json, Lines> cases[] = {
      {{{"lockdown", {{"possible", false}}}}, {"Configure Lockdown Mode"}},
      {rehearsed(agentRefuses), {"Configure Lockdown Mode"}},
      {{{"network", {{"kernelNics", Json::array()}}}},
       {"Configure Management Network", "Restart Management Network", "Test Management Network"}},
      {{{"options", {{"PXEBootEnabled", 1}}}}, {"Reset System Configuration"}}};
  for (const auto& [changes, entries] : cases) {
    SCOPED_TRACE(changes);
    Demo demo(changes);
    logIn(demo);
    for (const auto& entry : entries)
      EXPECT_EQ(coloursOf(demo.Look(), entry), (Colours{6, 3})) << entry;
    for (int i = 0; i < 10; ++i, demo.Press("Down"))
      for (const auto& entry : entries)
        EXPECT_EQ(demo.Look().Row(1).find(entry), std::string::npos) << entry;
  }
}

TEST(Menu, PagesThroughTheSupportInformation) {
  Demo demo;
  openMenu(demo, 8);
  std::vector<Screen> pages;
  for (const char* hint : {" <Page Down>", " <Page Up>/<Page Down>", " <Page Up> "}) {
    pages.push_back(demo.Look());
    EXPECT_NE(pages.back().Row(20).find(hint), std::string::npos) << pages.back().Dump();
    demo.Press("PageDown");
  }
  EXPECT_EQ(demo.Look(), pages[2]) << "there is no page behind the last";
  demo.Press("PageUp");
  EXPECT_EQ(demo.Look(), pages[1]);
  demo.Do({"Up", "Down"});
  EXPECT_EQ(demo.Look(), pages[0]) << "it begins at the first page again";
  demo.Press("PageUp");
  EXPECT_EQ(demo.Look(), pages[0]);
  std::filesystem::remove(demo.host.Root("/etc/corvo/support"));
  demo.Press("Esc");
  openMenu(demo, 8);
  EXPECT_FALSE(demo.WaitFor("No support information is").Shows("<Page"));
}

TEST(LogViewer, LendsTheTerminalToThePagerAndComesBack) {
  Demo demo;
  openMenu(demo, 7);
  const Screen before = demo.Look();
  demo.NewLines();
  demo.Press("Enter");
  EXPECT_EQ(demo.Look(), before) << "Enter opens nothing";
  demo.Do({"type:1", "wait:<Q> Quit </> RegExp Search <H> Help", "type:!",
           "wait:Command not available", "Enter", "type:q"});
  EXPECT_EQ(demo.WaitFor("System Customization"), before);
  EXPECT_EQ(demo.NewLines(), Lines{"run\t/bin/less less -cfP <Q> Quit </> RegExp Search <H> Help "
                                   "HOST/root/var/log/syslog.log"});
  std::filesystem::remove(demo.host.Root("/var/log/tarn.log"));
  demo.Do({"Up", "Down", "wait:<2> Config"});  // the list follows the files
}

TEST(LogViewer, EndsWithTheConsoleBelowAJobControlShellToo) {
  Demo demo({}, {.script = "set -m; \"$0\" \"$@\"; echo ended $?; read x"});
  openMenu(demo, 7);
  demo.Send("1");
  demo.WaitForPassing("<Q> Quit");
  pid_t console = 0;
  std::ifstream(demo.host.Root("/var/run/kiva.pid")) >> console;
  ASSERT_GT(console, 0);
  kill(console, SIGTERM);
  demo.WaitForPassing("ended 0");
}

TEST(LogViewer, AChangeOfSizeMeanwhileEndsTheConsoleAfterwards) {
  Demo demo;
  openMenu(demo, 7);
  demo.Send("1");
  demo.WaitForPassing("<Q> Quit");
  demo.Resize({30, 90});
  // The pager drops what is typed while it draws for the new size.
  const auto isDrawn = [](const Screen& now) { return now.Find("<Q> Quit") == Position{29, 0}; };
  demo.WaitUntil(isDrawn, "the pager's prompt in its new last row");
  demo.Send("q");
  EXPECT_EQ(demo.WaitForExit(), 0);
  EXPECT_EQ(demo.host.Journal().back(), "log.info\tResized window to 90x30");
}

}  // namespace
