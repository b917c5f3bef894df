// SPDX-License-Identifier: MIT
// The restart of the management agents, slow where a test wants to look at it.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <set>

#include "harness/demo.h"

using namespace Harness;

namespace {

const Lines kAnnounced = announced("restarting.hostagents", "Restarting host agents");
const Lines kRestarted = {"run\t/bin/sh sh -c /bin/sh /sbin/services.sh stop",
                          "run\t/bin/sh sh -c /bin/sh /sbin/services.sh start"};
/// Nobody knows otherwise whether the core or the stop comes first.
const Json kAgentsStay = rehearsed({{"/sbin/services.sh", {{"status", 0}}}});

void openAgents(Demo& demo) {
  openTroubleshooting(demo, 4);
  demo.Do({"Enter", "wait:Restart management agents now?"});
  demo.NewLines();
}

TEST(Agents, AreRestartedByF11AloneAndTellHowFarTheyAre) {
  constexpr Colours kWarning{1, 6}, kNewest{0, 3}, kDone{6, 3};
  Demo demo(rehearsed({{"/sbin/services.sh", {{"status", 0}, {"seconds", 2}}}}));
  openAgents(demo);
  Screen screen = demo.Look();
  EXPECT_EQ(coloursOf(screen, "Warning! Restarting"), kWarning);
  demo.Do({"Enter", "Down", "type:yY  "});
  EXPECT_EQ(demo.Look(), screen);
  demo.Send(keyBytes("F11"));
  screen = demo.WaitForPassing("Stopping management agents.");
  EXPECT_EQ(coloursOf(screen, "Stopping"), kNewest);
  const Lines gone = {"agents now?", "Collect extra", "<F11> OK"};
  EXPECT_EQ(missingFrom(screen, gone), gone);
  screen = demo.WaitForPassing("Starting management agents.");
  EXPECT_EQ(coloursOf(screen, "Stopping"), kDone);
  EXPECT_EQ(coloursOf(screen, "Starting"), kNewest);
  demo.Send("\r\r");
  screen = demo.WaitFor("<Enter> OK");
  for (const char* step : {"Stopping", "Starting"}) EXPECT_EQ(coloursOf(screen, step), kDone);
  EXPECT_EQ(demo.NewLines(), kAnnounced + kRestarted);
  demo.Do({"F11", "Esc", "wait:<Enter> OK", "Enter", "gone:<Enter> OK"});
}

TEST(Agents, LeaveALiveCoreBehindOnEveryRequestWhateverTheToolsCameTo) {
  const Lines run = {
      "log.info\tExecuting tarnbacktrace -c against mgmtd",
      "run\t/bin/sh sh -c /sbin/tarnbacktrace -w -n mgmtd -o mgmtd-restart% -d /var/log/"};
  const Lines done = kRestarted + run + "hostctl\tSetSystemAlert Mgmtd core dump completed";
  const Lines failed = kRestarted + run + "log.err\ttarnbacktrace failed, probably mgmtd was down";
  const Json one = {{"status", 1}};
  const std::pair<Json, Lines> cases[] = {
      {Json::object(), done},
      {rehearsed({{"/sbin/services.sh", one}}), done},
      {rehearsed({{"/sbin/tarnbacktrace", one}}), failed},
      {rehearsed({{"/bin/sh", kGone}}), failed},
      {failing("SetSystemAlert", "deaf"), kRestarted + run},
      {failing("TarnCtl_Exec", "none"), {run[0], "log.err\tnone", "log.err\tnone"}}};
  for (const auto& [changes, lines] : cases) {
    SCOPED_TRACE(changes);
    Demo demo(kAgentsStay);
    openTroubleshooting(demo, 4);
    demo.host.Change(changes);
    Lines all, expected = demo.host.Journal() + kAnnounced + lines + kAnnounced + lines;
    for (int i = 0; i < 2; ++i)
      demo.Do({"Enter", "type: ", "F11", "wait:<Enter> OK", "wait:Stopping management a",
               "wait:Starting management a", "Enter"});
    const auto isWritten = [&](const Screen&) {
      return (all = demo.host.Journal()).size() >= expected.size();
    };
    demo.WaitUntil(isWritten, "the threads to end");
    EXPECT_EQ(std::multiset(all.begin(), all.end()),
              std::multiset(expected.begin(), expected.end()));
  }
}

TEST(Agents, AreRestartedWithoutACoreWhereNoThreadCanBeHad) {
  Demo demo;
  openAgents(demo);
  rlim_t pages = 0;
  processFile(demo, "statm") >> pages;
  // Enough for everything but the stack of a thread.
  const rlim_t most = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + 1024 * 1024;
  const rlimit limit{most, most};
  ASSERT_EQ(prlimit(demo.Pid(), RLIMIT_AS, &limit, nullptr), 0);
  demo.Do({"type: ", "F11", "wait:<Enter> OK"});
  const Lines failed = {
      "log.err\tFailed to create live core generation thread: Resource temporarily unavailable"};
  EXPECT_EQ(demo.NewLines(), kAnnounced + failed + kRestarted);
}

TEST(Agents, TheConsoleMayEndWhileTheCoreIsBeingWritten) {
  Demo demo(rehearsed({{"/sbin/tarnbacktrace", {{"status", 0}, {"seconds", 3}}}}));
  openAgents(demo);
  demo.Do({"type: ", "F11", "wait:<Enter> OK"});
  int blocking = 0;
  const auto tasks = "/proc/" + std::to_string(demo.Pid()) + "/task";
  for (const auto& task : std::filesystem::directory_iterator(tasks))
    blocking += contentOf(task.path() / "status").find("\t0000000008004a06\n") != std::string::npos;
  EXPECT_EQ(blocking, 2) << "the console and the core leave the signals to their own thread";
  EXPECT_EQ(demo.Stop(), 0);
}

}  // namespace
