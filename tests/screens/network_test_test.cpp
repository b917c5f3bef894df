// SPDX-License-Identifier: MIT
// The test of the management network: its form, its runs, and what an abandoned one leaves behind.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include "harness/demo.h"

using namespace Harness;

namespace {

const std::string kName = "halo-01.example.test", kPing = "run\t/bin/sh sh -c /bin/tarnping -c 3 ";
const Lines kResolved = {"hostctl\tRemoveEntryByHostName " + kName, "resolve\t" + kName};

void openForm(Demo& demo, const Json& changes = Json::object()) {
  openMenu(demo, 4);
  demo.host.Change(changes);
  demo.Do({"Enter", "wait:Resolve Hostname"});
}

/// Puts these into the fields in place of what the form offers.
void fill(Demo& demo, const Lines& values) {
  for (const std::string& value : values) demo.Do({"Delete", "type:" + value, "Down"});
}

void startRun(Demo& demo, const std::string& until) {
  demo.Send("\r");
  demo.WaitForPassing(until);
}

TEST(NetworkTestForm, TakesAddressesAndANameAndNothingElse) {
  Demo demo;
  openForm(demo);
  fill(demo, {"g1%;0.z0 $.`0.5", "", "", "a b\t(c);%"});
  const Lines taken = {"Ping Address #1:        [ 10.0.0.5  ", "#2:        [    ", "[ ab(c);%  "};
  EXPECT_EQ(missingFrom(demo.Look(), taken), Lines{});
  demo.Press("Up", 4);
  demo.Do({"Down", "type:1.2.3", "Up", "Enter", "wait:Invalid IP or IPv6 addr", "Enter"});
  const Screen screen = demo.WaitFor("#2:        [ 1.2.3  ");
  EXPECT_EQ(screen.cursor.row, screen.Find("#2:").value().row) << "where the trouble is";
  demo.Do({"Esc", "gone:Resolve Hostname"});
}

TEST(NetworkTestForm, OffersWhatTheHostTells) {
  const Json routing = {{"ipv4Gateway", "0.0.0.0"}, {"ipv6Gateway", "fe80::1%tarn0"}};
  const std::pair<Json, Lines> cases[] = {
      {failing("RoutingInfo", "none"),
       {"#1:        [ 10.20.30.2 ", "#2:        [ 2001:db8:20::53 "}},
      {failing("DnsConfig.Refresh", "none"), {"#3:        [    ", "e        [    "}},
      {{{"network", {{"routing", routing}}}},
       {"#1:        [ fe80::1 ", "#2:        [ 10.20.30.2 "}},
      {{{"network", {{"ipv6Enabled", false}}}}, {"#2:        [ 10.20.30.2 ", "#3:        [    "}}};
  for (const auto& [changes, fields] : cases) {
    Demo demo;
    openForm(demo, changes);
    EXPECT_EQ(missingFrom(demo.Look(), fields), Lines{}) << changes;
    EXPECT_EQ(demo.HasLine("log.err", "none"), changes.contains("faults"));
  }
}

TEST(NetworkTestRun, TriesWhatIsFilledInAndTellsWhatCameOfIt) {
  Demo demo;
  openForm(demo);
  demo.NewLines();
  demo.Do({"Enter", "wait:<Enter> OK"});
  Screen screen = demo.Look();
  const int end = screen.Find("<Enter> OK").value().column + 10;
  for (const char* line : {"Pinging address #1 (10.20.30.1).", "#2 (2001:db8:20::1).",
                           "#3 (10.20.30.2).", "Resolving hostname (halo-01.example.test)."})
    EXPECT_EQ(screen.At(screen.Find(line).value().row, end - 1).text, ".") << line;
  const Lines pings = {kPing + "10.20.30.1", kPing + "2001:db8:20::1", kPing + "10.20.30.2"};
  EXPECT_EQ(demo.NewLines(), pings + kResolved);
  demo.Do({"Esc", "Down", "type: x", "wait:<Enter> OK", "Enter", "gone:Testing"});

  const std::string longest = "fe80:1111:2222:3333:4444:5555:255.255.255.255";
  fill(demo, {"", longest, "", "{b}"});
  demo.Do({"Enter", "wait:Resolving hostname ((b)).", "wait:<Enter> OK"});
  screen = demo.WaitFor("Pinging address #2 (" + longest + "%tarn0).");
  EXPECT_EQ(screen.Find("Failed.").value().row, screen.Find("#2").value().row + 1);
  const Lines named = {"hostctl\tRemoveEntryByHostName {b}", "resolve\t{b}"};
  EXPECT_EQ(demo.NewLines(), Lines{kPing + longest + "%tarn0"} + named);

  demo.host.Change({{"faults", {{"TarnCtl_Exec", "none"}, {"RemoveEntryByHostName", "no"}}}});
  demo.Do({"Enter", "Enter", "wait:Resolving", "wait:<Enter> OK"});
  EXPECT_EQ(demo.NewLines(), Lines({"log.err\tnone", "log.err\tno"}));

  // The newest lines stay in sight, and every name is taken. What is filled in already stays.
  demo.host.Change({{"faults", nullptr}});
  demo.Do({"Enter", "gone:Testing", "Up", "Up", "Up", "Up"});
  const std::string rest = std::string(296, 'n') + ".";
  fill(demo, {longest, "", longest, rest});
  demo.Do({"Enter", "wait:#3", "wait:Resolving", "wait:nnn).", "wait:<Enter> OK"});
  EXPECT_FALSE(demo.Look().Shows("#1"));
  EXPECT_TRUE(demo.HasLine("resolve", "{b}" + rest));
}

TEST(NetworkTestRun, EndsWithEscapeWhateverHangs) {
  Demo demo(rehearsed({{"/bin/tarnping", {{"status", 0}, {"seconds", 20}}}}));
  openForm(demo);
  for (int i = 0; i < 2; ++i) {
    startRun(demo, "Pinging address #1");
    const auto pressed = std::chrono::steady_clock::now();
    demo.Send("x\r\033");
    demo.WaitForGone("Testing");
    EXPECT_LT(std::chrono::steady_clock::now() - pressed, std::chrono::milliseconds(700));
  }
  startRun(demo, "Pinging address #1");
  EXPECT_EQ(demo.Stop(), 0);
}

TEST(NetworkTestRun, LeavesTheHostsFileWholeAndIsMendedAfterAKill) {
  Demo demo(Json{{"resolutionSeconds", 30}});
  openForm(demo);
  const auto hosts = [&] { return contentOf(demo.host.Root("/etc/hosts")); };
  const std::string before = hosts();
  fill(demo, {"", "", ""});
  demo.NewLines();
  for (std::size_t i = 1; i <= 2; ++i) {
    startRun(demo, "Resolving hostname");
    demo.WaitUntil([&](const Screen&) { return demo.host.Journal("resolve").size() == i; }, kName);
    EXPECT_EQ(hosts().find(kName), std::string::npos);
    demo.Do({"Esc", "gone:Testing"});
    EXPECT_EQ(hosts(), before) << "nobody waits for the abandoned one";
  }
  demo.host.Change({{"resolutionSeconds", 0}});
  startRun(demo, " OK. ");
  EXPECT_EQ(demo.NewLines(), kResolved + kResolved + kResolved);
  EXPECT_EQ(hosts(), before);

  const auto start = [&] { Terminal(demo.host.Demo(), Size{24, 80}).WaitFor(kWelcome); };
  demo.host.Change({{"resolutionSeconds", 30}});
  demo.Press("Enter");
  startRun(demo, "Resolving hostname");
  demo.WaitUntil([&](const Screen&) { return hosts() != before; }, "the resolution");
  start();
  EXPECT_NE(hosts(), before);
  EXPECT_TRUE(demo.HasLine("log.info", "Leaving /etc/hosts to another console's test"));
  demo.EndBy(SIGKILL);
  start();
  EXPECT_EQ(hosts(), before);
  EXPECT_TRUE(demo.HasLine("log.info", "Putting /etc/hosts back from /etc/hosts.backup"));
}

}  // namespace
