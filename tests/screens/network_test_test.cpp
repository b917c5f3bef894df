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
  logIn(demo);
  demo.Press("Down", 4);
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

std::string hostsOf(const Demo& demo) {
  return contentOf(demo.host.Root("/etc/hosts"));
}

TEST(NetworkTestForm, TakesAddressesAndANameAndNothingElse) {
  Demo demo;
  openForm(demo);
  demo.NewLines();
  fill(demo, {"g1%;0.z0 $.`0.5", "", "", "a b\t(c);%"});
  const Lines taken = {"Ping Address #1:        [ 10.0.0.5  ", "#2:        [    ", "[ ab(c);%  "};
  EXPECT_EQ(missingFrom(demo.Look(), taken), Lines{});
  demo.Press("Up", 4);
  for (const std::string address : {"1.2.3", "256.1.1.1", "::fffff", ".", "1:2:3:4:5:6:7:8:9"}) {
    demo.Do(
        {"Down", "type:" + address, "Up", "Enter", "wait:Invalid IP or IPv6 address.", "Enter"});
    const Screen screen = demo.WaitFor("#2:        [ " + address + "  ");
    EXPECT_EQ(screen.cursor.row, screen.Find("#2:").value().row) << address;
    demo.Press("Backspace", static_cast<int>(address.size()));
    demo.Press("Up");
  }
  EXPECT_EQ(demo.NewLines(), Lines{});
  demo.Do({"Esc", "gone:Resolve Hostname"});
}

TEST(NetworkTestForm, OffersWhatTheHostTells) {
  const std::pair<const char*, Lines> cases[] = {
      {"nothing",
       {"#1:        [ 10.20.30.1 ", "#2:        [ 2001:db8:20::1 ", "#3:        [ 10.20.30.2 ",
        "[ " + kName}},
      {"IsTarnIpv6Enabled", {"#2:        [ 10.20.30.2 ", "#3:        [   "}},
      {"RoutingInfo", {"#1:        [ 10.20.30.2 ", "#2:        [ 2001:db8:20::53 "}},
      {"GetTarnDefaultGateway", {"#1:        [ 2001:db8:20::1 ", "#2:        [ 10.20.30.2 "}},
      {"DnsConfig.Refresh",
       {"#2:        [ 2001:db8:20::1 ", "#3:        [    ", "Hostname        [    "}},
      {"GetDomain", {"Hostname        [ halo-01   "}}};
  for (const auto& [fault, fields] : cases) {
    Demo demo;
    openForm(demo, failing(fault, "no answer"));
    EXPECT_EQ(missingFrom(demo.Look(), fields), Lines{}) << fault;
    EXPECT_EQ(demo.HasLine("log.err", "no answer"), fault != std::string("nothing"));
  }
}

TEST(NetworkTestRun, TriesWhatIsFilledInAndTellsWhatCameOfIt) {
  Demo demo;
  openForm(demo);
  demo.NewLines();
  const std::string before = hostsOf(demo);
  demo.Do({"Enter", "wait:<Enter> OK"});
  Screen screen = demo.Look();
  const int end = screen.Find("<Enter> OK").value().column + 10;
  for (const char* line : {"Pinging address #1 (10.20.30.1).", "#2 (2001:db8:20::1).",
                           "#3 (10.20.30.2).", "Resolving hostname (halo-01.example.test)."})
    EXPECT_EQ(screen.At(screen.Find(line).value().row, end - 1).text, ".") << line;
  EXPECT_EQ(
      demo.NewLines(),
      Lines({kPing + "10.20.30.1", kPing + "2001:db8:20::1", kPing + "10.20.30.2"}) + kResolved);
  EXPECT_EQ(hostsOf(demo), before);
  demo.Do({"Esc", "Down", "type: x", "wait:<Enter> OK", "Enter", "gone:Testing"});

  const std::string longest = "fe80:1111:2222:3333:4444:5555:255.255.255.255";
  fill(demo, {"", longest, "", "localhost{b}"});
  demo.Do({"Enter", "wait:<Enter> OK"});
  screen = demo.Look();
  EXPECT_EQ(missingFrom(screen, {"address #2 (" + longest + "%tarn0).", "name (localhost(b))."}),
            Lines{});
  EXPECT_FALSE(screen.Shows("Pinging address #1"));
  EXPECT_EQ(screen.Find("Failed.").value().row, screen.Find("#2").value().row + 1);
  EXPECT_EQ(demo.NewLines(),
            Lines({kPing + longest + "%tarn0", "hostctl\tRemoveEntryByHostName localhost{b}",
                   "resolve\tlocalhost{b}"}));
}

TEST(NetworkTestRun, CountsWhatCannotBeRunAsFailed) {
  const Json cases[] = {rehearsed({{"/bin/tarnping", {{"status", 2}}}}),
                        rehearsed({{"/bin/tarnping", kDies}}),
                        rehearsed({{"/bin/sh", kGone}}),
                        failing("TarnCtl_Exec", "none"),
                        failing("RemoveEntryByHostName", "none"),
                        {{"resolvable", Json::array()}}};
  for (const Json& changes : cases) {
    Demo demo(changes);
    openForm(demo);
    const std::string before = hostsOf(demo);
    demo.Do({"Enter", "wait:<Enter> OK"});
    const bool pings = changes != cases[4] && changes != cases[5];
    const Screen screen = demo.Look();
    EXPECT_EQ(screen.Find("Failed.").value().row,
              screen.Find(pings ? "#1" : "Resolving").value().row);
    EXPECT_TRUE(screen.Shows("  OK. ")) << changes;
    EXPECT_EQ(hostsOf(demo), before);
  }
}

TEST(NetworkTestRun, EndsWithEscapeWhateverHangs) {
  Demo demo(rehearsed({{"/bin/tarnping", {{"status", 0}, {"seconds", 20}}}}));
  openForm(demo);
  for (int i = 0; i < 2; ++i) {
    startRun(demo, "Pinging address #1");
    demo.Send("x\r");
    const auto pressed = std::chrono::steady_clock::now();
    demo.Send("\033");
    demo.WaitForGone("Testing");
    EXPECT_LT(std::chrono::steady_clock::now() - pressed, std::chrono::milliseconds(700));
  }
  startRun(demo, "Pinging address #1");
  EXPECT_EQ(demo.Stop(), 0);
}

TEST(NetworkTestRun, WaitsForAnAbandonedResolution) {
  Demo demo(Json{{"resolutionSeconds", 2}});
  openForm(demo);
  const std::string before = hostsOf(demo);
  fill(demo, {"", "", ""});
  demo.NewLines();
  for (int i = 0; i < 2; ++i) {
    startRun(demo, "Resolving hostname");
    demo.WaitForLine("resolve", kName);
    EXPECT_EQ(hostsOf(demo).find(kName), std::string::npos);
    demo.Do({"Esc", "gone:Testing"});
  }
  startRun(demo, " OK. ");
  EXPECT_EQ(demo.NewLines(), kResolved + kResolved) << "the second never began";
  EXPECT_EQ(hostsOf(demo), before);
}

TEST(NetworkTestRun, ThatIsKilledIsMendedAtTheNextStart) {
  Demo demo(Json{{"resolutionSeconds", 30}});
  const std::string before = hostsOf(demo);
  openForm(demo);
  demo.Send("\r");
  demo.WaitForLine("resolve", kName);
  const auto start = [&] { Terminal(demo.host.Demo(), Size{24, 80}).WaitFor(kWelcome); };
  start();
  EXPECT_NE(hostsOf(demo), before) << "one console leaves the other its test";
  demo.EndBy(SIGKILL);
  start();
  EXPECT_EQ(hostsOf(demo), before);
  EXPECT_TRUE(demo.HasLine("log.info", "Putting /etc/hosts back from /etc/hosts.backup"));
}

}  // namespace
