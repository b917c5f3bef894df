// SPDX-License-Identifier: MIT
// The test of the management network: its form, its runs, and what an abandoned one leaves behind.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr const char* kRun = "Testing Management Network";
const Lines kResolved = {"hostctl\tRemoveEntryByHostName halo-01.example.test",
                         "resolve\thalo-01.example.test"};

std::string pinged(const std::string& address) {
  return "run\t/bin/sh sh -c /bin/tarnping -c 3 " + address;
}

void selectTest(Demo& demo) {
  logIn(demo);
  demo.Press("Down", 4);
}

void openForm(Demo& demo) {
  selectTest(demo);
  demo.Do({"Enter", "wait:Resolve Hostname"});
  demo.NewLines();
}

/// Puts these into the fields in place of what the form offers.
void fill(Demo& demo, const Lines& values) {
  for (const std::string& value : values) {
    demo.Press("Delete");
    demo.Do({"type:" + value, "Down"});
  }
}

std::string hostsOf(const Demo& demo) {
  return contentOf(demo.host.Root("/etc/hosts"));
}

TEST(NetworkTestForm, TakesAddressesAndANameAndNothingElse) {
  Demo demo;
  openForm(demo);
  const Lines offered = {"Ping Address #1:        [ 10.20.30.1 ",
                         "Ping Address #2:        [ 2001:db8:20::1 ",
                         "Ping Address #3:        [ 10.20.30.2 ",
                         "Resolve Hostname        [ halo-01.example.test ",
                         "<Up/Down> Select",
                         "<Enter> OK  <Esc> Cancel"};
  EXPECT_EQ(missingFrom(demo.Look(), offered), Lines{});
  fill(demo, {"g1%;0.z0 $.`0.5", "", "", "a b\t(c);%"});
  EXPECT_EQ(missingFrom(demo.Look(), {"[ 10.0.0.5  ", "#2:        [    ", "[ ab(c);%  "}), Lines{});
  demo.Press("Up", 4);
  const std::string invalid[] = {"1.2.3",    "1.2.3.4.5",         "256.1.1.1",
                                 "01.2.3.4", "1::2::3",           "::fffff",
                                 ".",        "1:2:3:4:5:6:7:8:9", std::string(70, '1')};
  for (const std::string& address : invalid) {
    demo.Do({"Down", "type:" + address, "Up", "Enter"});
    EXPECT_EQ(missingFrom(demo.Look(), {"Invalid IP address", "Invalid IP or IPv6 address."}),
              Lines{});
    demo.Press("Enter");
    const Screen screen = demo.WaitFor("#2:        [ " + address.substr(0, 45));
    EXPECT_EQ(screen.cursor.row, screen.Find("#2:").value().row) << address;
    EXPECT_TRUE(screen.cursorVisible);
    demo.Press("Backspace", static_cast<int>(address.size()));
    demo.Press("Up");
  }
  EXPECT_EQ(demo.NewLines(), Lines{});
  demo.Do({"Esc", "gone:Resolve Hostname"});
}

TEST(NetworkTestForm, OpensWhateverTheHostDoesNotTell) {
  const std::pair<const char*, Lines> cases[] = {
      {"IsTarnIpv6Enabled",
       {"#1:        [ 10.20.30.1 ", "#2:        [ 10.20.30.2 ", "#3:        [   "}},
      {"RoutingInfo", {"#1:        [ 10.20.30.2 ", "#2:        [ 2001:db8:20::53 "}},
      {"GetTarnDefaultGateway", {"#1:        [ 2001:db8:20::1 ", "#2:        [ 10.20.30.2 "}},
      {"GetTarnIpv6DefaultGateway", {"#1:        [ 10.20.30.1 ", "#2:        [ 10.20.30.2 "}},
      {"DnsConfig.Refresh",
       {"#2:        [ 2001:db8:20::1 ", "#3:        [    ", "Hostname        [    "}},
      {"GetNameServers", {"#3:        [    ", "[ halo-01.example.test "}},
      {"GetDomain", {"Hostname        [ halo-01   "}}};
  for (const auto& [fault, fields] : cases) {
    SCOPED_TRACE(fault);
    Demo demo;
    selectTest(demo);
    demo.host.Change(failing(fault, "no answer"));
    demo.Do({"Enter", "wait:Resolve Hostname"});
    EXPECT_EQ(missingFrom(demo.Look(), fields), Lines{});
    EXPECT_TRUE(demo.HasLine("log.err", "no answer"));
  }
}

TEST(NetworkTestForm, NeedsAnInterface) {
  Demo demo;
  selectTest(demo);
  demo.host.Set("/network/kernelNics", Json::array());
  demo.Do({"Enter", "wait:Management network interface cannot be found.", "Enter", "wait:Log Out"});
}

TEST(NetworkTestRun, TriesWhatIsFilledInAndTellsWhatCameOfIt) {
  Demo demo;
  openForm(demo);
  const std::string before = hostsOf(demo);
  demo.Press("Enter");
  Screen screen = demo.WaitFor("<Enter> OK");
  const int last = screen.Find("<Enter> OK").value().column + 10;
  for (const char* line : {"Pinging address #1 (10.20.30.1).", "#2 (2001:db8:20::1).",
                           "#3 (10.20.30.2).", "Resolving hostname (halo-01.example.test)."}) {
    const int row = screen.Find(line).value().row;
    std::string end;
    for (int column = last - 6; column < last; ++column) end += screen.At(row, column).text;
    EXPECT_EQ(end, "   OK.") << line;
  }
  const Lines pings = {pinged("10.20.30.1"), pinged("2001:db8:20::1"), pinged("10.20.30.2")};
  EXPECT_EQ(demo.NewLines(), pings + kResolved);
  EXPECT_EQ(hostsOf(demo), before);
  demo.Do({"Esc", "Down", "type: x", "wait:<Enter> OK", "Enter", "gone:Testing"});

  fill(demo, {"", "fe80:1111:2222:3333:4444:5555:255.255.255.255", "", "localhost{b}"});
  demo.Press("Enter");
  screen = demo.WaitFor("<Enter> OK");
  const Lines lines = {"address #2 (fe80:1111:2222:3333:4444:5555:255.255.255.255%tarn0).",
                       "Resolving hostname (localhost(b))."};
  EXPECT_EQ(missingFrom(screen, lines), Lines{});
  EXPECT_FALSE(screen.Shows("Pinging address #1"));
  EXPECT_EQ(screen.Find("Failed.").value().row, screen.Find("#2").value().row + 1);
  EXPECT_EQ(demo.NewLines(),
            Lines({pinged("fe80:1111:2222:3333:4444:5555:255.255.255.255%tarn0"),
                   "hostctl\tRemoveEntryByHostName localhost{b}", "resolve\tlocalhost{b}"}));
  EXPECT_EQ(hostsOf(demo), before);

  demo.Press("Enter");
  demo.Do({"Up", "Up"});
  demo.Press("Backspace", 50);
  demo.Press("Down", 2);
  demo.Press("Backspace", 12);
  demo.Do({"Enter", "wait:<Enter> OK"});
  EXPECT_FALSE(demo.Look().Shows("Pinging address"));
  EXPECT_EQ(demo.NewLines(), Lines{});
}

TEST(NetworkTestRun, CountsWhatCannotBeRunAsFailed) {
  const std::pair<Json, int> cases[] = {{rehearsed({{"/bin/tarnping", {{"status", 2}}}}), 3},
                                        {rehearsed({{"/bin/tarnping", kDies}}), 3},
                                        {rehearsed({{"/bin/sh", kGone}}), 3},
                                        {failing("TarnCtl_Exec", "none"), 3},
                                        {failing("RemoveEntryByHostName", "none"), 1},
                                        {{{"resolvable", Json::array()}}, 1}};
  for (const auto& [changes, failures] : cases) {
    SCOPED_TRACE(changes);
    Demo demo(changes);
    openForm(demo);
    const std::string before = hostsOf(demo);
    demo.Do({"Enter", "wait:<Enter> OK"});
    const std::string text = demo.Look().Text();
    int failed = 0;
    for (auto at = text.find("Failed."); at != text.npos; at = text.find("Failed.", at + 1))
      ++failed;
    EXPECT_EQ(failed, failures);
    EXPECT_EQ(hostsOf(demo), before);
  }
}

TEST(NetworkTestRun, EndsWithEscapeWhateverHangs) {
  Demo demo(rehearsed({{"/bin/tarnping", {{"status", 0}, {"seconds", 20}}}}));
  openForm(demo);
  for (int i = 0; i < 2; ++i) {
    demo.Send("\r");
    demo.WaitForPassing("Pinging address #1");
    demo.Send("x\r");
    const auto pressed = std::chrono::steady_clock::now();
    demo.Send("\033");
    demo.WaitForGone(kRun);
    EXPECT_LT(std::chrono::steady_clock::now() - pressed, std::chrono::milliseconds(700));
  }
  demo.Send("\r");
  demo.WaitForPassing(kRun);
  EXPECT_EQ(demo.Stop(), 0);
}

TEST(NetworkTestRun, WaitsForAnAbandonedResolution) {
  Demo demo(Json{{"resolutionSeconds", 2}});
  openForm(demo);
  const std::string before = hostsOf(demo);
  fill(demo, {"", "", ""});
  for (int i = 0; i < 2; ++i) {
    demo.Send("\r");
    demo.WaitForPassing("Resolving hostname");
    if (i == 0) demo.WaitForLine("resolve", "halo-01.example.test");
    EXPECT_EQ(hostsOf(demo).find("halo-01.example"), std::string::npos);
    demo.Do({"Esc", "gone:Testing"});
  }
  demo.Send("\r");
  demo.WaitForPassing(" OK. ");
  EXPECT_EQ(demo.NewLines(), kResolved + kResolved) << "the second never began";
  EXPECT_EQ(hostsOf(demo), before);
}

TEST(NetworkTestRun, ThatIsKilledIsMendedAtTheNextStart) {
  Demo demo(Json{{"resolutionSeconds", 30}});
  const std::string before = hostsOf(demo);
  openForm(demo);
  demo.Send("\r");
  demo.WaitForLine("resolve", "halo-01.example.test");
  EXPECT_NE(hostsOf(demo), before);
  const auto start = [&] {
    Terminal again(demo.host.Demo(), Size{24, 80});
    again.WaitFor(kWelcome);
  };
  start();
  EXPECT_NE(hostsOf(demo), before) << "one console leaves the other its test";
  demo.Signal(SIGKILL);
  demo.WaitForExit();
  start();
  EXPECT_EQ(hostsOf(demo), before);
  EXPECT_EQ(demo.host.Journal("log.info").back(), "Putting /etc/hosts back from /etc/hosts.backup");
  EXPECT_FALSE(std::filesystem::exists(demo.host.Root("/etc/hosts.backup")));
}

}  // namespace
