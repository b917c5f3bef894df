// SPDX-License-Identifier: MIT
// The restart of the management agents, held up where a test wants to look at it.
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>

#include <csignal>

#include "harness/demo.h"
#include "hostctl/lib/descriptor.h"

using namespace Harness;

namespace {

constexpr int kAgents = 4;
constexpr Colours kDone{6, 3}, kNewest{0, 3};

const std::string kCore =
    "run\t/bin/sh sh -c /sbin/tarnbacktrace -w -n mgmtd -o mgmtd-restart% -d /var/log/";
const Lines kAnnounced = {
    "log.info\tRestarting host agents", "log.info\tInitializing evbuser library",
    "event\t@&!*@*@(evb.user.kiva.restarting.hostagents)Restarting host agents"};
const Lines kRestarted = {"run\t/bin/sh sh -c /bin/sh /sbin/services.sh stop",
                          "run\t/bin/sh sh -c /bin/sh /sbin/services.sh start"};

/// Nobody knows otherwise whether the core or the stop comes first.
const Json kAgentsStay = {{"tools", {{"/sbin/services.sh", {{"status", 0}}}}}};

/// Keeps every change of a sample host waiting.
class HostLock {
 public:
  explicit HostLock(const DemoHost& host)
      : file_(open((host.File().string() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644)) {
    Take();
  }
  void Take() { ASSERT_EQ(flock(file_.Get(), LOCK_EX), 0); }
  void Release() { flock(file_.Get(), LOCK_UN); }

 private:
  HostCtl::Lib::Descriptor file_;
};

Colours coloursOf(const Screen& screen, const char* text) {
  const auto place = screen.Find(text);
  return place ? screen.ColoursAt(place->row, place->column) : Colours{};
}

void openAgents(Demo& demo) {
  openTroubleshooting(demo, kAgents);
  demo.Do({"Enter", "wait:Restart management agents now?"});
  demo.NewLines();
}

/// Lines of the journal that came from the thread, and those of the console itself.
std::pair<Lines, Lines> sorted(const Lines& lines) {
  std::pair<Lines, Lines> both;
  for (const auto& line : lines) {
    const bool ofCore = line == kCore || line.find("tarnbacktrace") != std::string::npos ||
                        line.find("SystemAlert") != std::string::npos;
    (ofCore ? both.first : both.second).push_back(line);
  }
  return both;
}

Lines operator+(Lines all, const Lines& more) {
  all.insert(all.end(), more.begin(), more.end());
  return all;
}

TEST(Agents, AreRestartedByF11Alone) {
  Demo demo;
  openAgents(demo);
  const Screen asked = demo.Look();
  EXPECT_TRUE(asked.Shows("[ ] Collect extra troubleshooting information"));
  EXPECT_TRUE(asked.Shows("<F11> OK  <Esc> Cancel"));
  EXPECT_EQ(coloursOf(asked, "Warning! Restarting").foreground, 1);
  demo.Do({"Enter", "Down", "F2", "type:yY"});
  EXPECT_EQ(demo.Look(), asked);
  demo.Do({"type: ", "type: ", "Esc"});
  EXPECT_EQ(demo.NewLines(), Lines{});
  demo.Do({"Enter", "F11", "wait:<Enter> OK", "Esc", "F11"});
  EXPECT_EQ(demo.NewLines(), kAnnounced + kRestarted);
  EXPECT_TRUE(demo.Look().Shows("Starting management agents.")) << "only Enter leaves";
  EXPECT_FALSE(demo.Look().Shows("<Esc> Cancel"));
  EXPECT_FALSE(demo.Look().Shows("Collect extra"));
  demo.Press("Enter");
  EXPECT_FALSE(demo.Look().Shows("Starting management agents."));
}

bool hasChild(pid_t pid) {
  const std::string main = std::to_string(pid);
  pid_t child = 0;
  return static_cast<bool>(std::ifstream("/proc/" + main + "/task/" + main + "/children") >> child);
}

TEST(Agents, TellHowFarTheirRestartIs) {
  Demo demo;
  openAgents(demo);
  HostLock lock(demo.host);
  demo.Send(keyBytes("F11"));
  Screen screen = demo.WaitUntil(
      [&](const Screen& now) { return now.Shows("Stopping") && hasChild(demo.Pid()); }, "the stop");
  EXPECT_EQ(coloursOf(screen, "Stopping"), kNewest);
  for (const char* gone : {"agents now?", "Collect extra", "<F11> OK"})
    EXPECT_FALSE(screen.Shows(gone)) << gone;
  // The console stands still between its two steps, until the second is sure to have to wait.
  demo.Signal(SIGSTOP);
  lock.Release();
  demo.WaitUntil(
      [&](const Screen&) { return demo.host.State()["services"]["evbd"]["running"] == false; },
      "the agents to stop");
  lock.Take();
  demo.Signal(SIGCONT);
  screen = demo.WaitForPassing("Starting management agents.");
  EXPECT_EQ(coloursOf(screen, "Stopping"), kDone);
  EXPECT_EQ(coloursOf(screen, "Starting"), kNewest);
  demo.Send("\r\r");
  lock.Release();
  screen = demo.WaitFor("<Enter> OK");
  EXPECT_EQ(coloursOf(screen, "Stopping"), kDone);
  EXPECT_EQ(coloursOf(screen, "Starting"), kDone);
}

TEST(Agents, LeaveALiveCoreBehindOnRequest) {
  const std::string began = "log.info\tExecuting tarnbacktrace -c against mgmtd";
  const struct {
    Json changes;
    Lines ofCore;
    Lines ofConsole;
  } cases[] = {
      {{}, {began, kCore, "hostctl\tSetSystemAlert Mgmtd core dump completed"}, kRestarted},
      {{{"tools", {{"/sbin/tarnbacktrace", {{"status", 2}}}}}},
       {began, kCore, "log.err\ttarnbacktrace failed, probably mgmtd was down"},
       kRestarted},
      {{{"faults", {{"SetSystemAlert", "deaf"}}}}, {began, kCore}, kRestarted},
      {{{"faults", {{"TarnCtl_Exec", "no shell"}}}},
       {began},
       {"log.err\tno shell", "log.err\tno shell"}}};
  for (const auto& [changes, ofCore, ofConsole] : cases) {
    SCOPED_TRACE(changes.dump());
    Demo demo(kAgentsStay);
    openAgents(demo);
    if (!changes.is_null()) demo.host.Change(changes);
    demo.Do({"type: ", "F11", "wait:<Enter> OK"});
    const std::size_t expected = kAnnounced.size() + ofCore.size() + ofConsole.size();
    Lines lines;
    demo.WaitUntil(
        [&](const Screen&) {
          lines = lines + demo.NewLines();
          return lines.size() >= expected;
        },
        "the thread to end");
    EXPECT_EQ(sorted(lines), std::pair(ofCore, kAnnounced + ofConsole));
  }
}

/// The memory that the program has reserved, in bytes.
rlim_t reservedBy(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/statm");
  rlim_t pages = 0;
  file >> pages;
  return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

TEST(Agents, AreRestartedWithoutACoreWhereNoThreadCanBeHad) {
  Demo demo;
  openAgents(demo);
  demo.Type(" ");
  // Enough for everything but the stack of a thread.
  const rlim_t most = reservedBy(demo.Pid()) + 1024 * 1024;
  const rlimit limit{most, most};
  ASSERT_EQ(prlimit(demo.Pid(), RLIMIT_AS, &limit, nullptr), 0);
  demo.Do({"F11", "wait:<Enter> OK"});
  EXPECT_EQ(demo.NewLines(),
            kAnnounced +
                Lines{"log.err\tFailed to create live core generation thread: Resource "
                      "temporarily unavailable"} +
                kRestarted);
}

/// How many threads of the program leave the handled signals to another one.
int threadsBlockingSignals(pid_t pid) {
  unsigned long handled = 0;
  for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGUSR1, SIGUSR2, SIGWINCH})
    handled |= 1ul << (number - 1);
  int threads = 0;
  const std::string tasks = "/proc/" + std::to_string(pid) + "/task";
  for (const auto& task : std::filesystem::directory_iterator(tasks)) {
    std::ifstream file(task.path() / "status");
    unsigned long mask = 0;
    for (std::string name; file >> name;)
      if (name == "SigBlk:") file >> std::hex >> mask;
    threads += (mask & handled) == handled;
  }
  return threads;
}

TEST(Agents, TheConsoleMayEndWhileTheCoreIsBeingWritten) {
  Demo demo(kAgentsStay);
  openAgents(demo);
  HostLock lock(demo.host);  // only the alert needs the host
  demo.Do({"type: ", "F11", "wait:<Enter> OK"});
  demo.WaitForLine("run", kCore.substr(4));
  EXPECT_EQ(threadsBlockingSignals(demo.Pid()), 2) << "the console's own and the core's";
  EXPECT_EQ(demo.Stop(), 0);
}

TEST(Agents, AStopSignalEndsEveryDialog) {
  const std::pair<int, Lines> places[] = {{0, {}},
                                          {2, {"Enter", "type:5"}},
                                          {2, {"type:1441", "Enter"}},
                                          {3, {"Enter", "type:5"}},
                                          {kAgents, {"Enter", "type: "}},
                                          {kAgents, {"Enter", "F11", "wait:<Enter> OK"}}};
  for (const auto& [row, keys] : places) {
    Demo demo;
    openTroubleshooting(demo, row);
    demo.Do(keys);
    demo.NewLines();
    EXPECT_EQ(demo.Stop(), 0) << row;
    EXPECT_EQ(demo.NewLines(), Lines{});
  }
  Demo demo;
  openAgents(demo);
  HostLock lock(demo.host);
  demo.Send(keyBytes("F11"));
  demo.WaitForPassing("Stopping management agents.");
  demo.Signal(SIGTERM);
  lock.Release();
  EXPECT_EQ(demo.WaitForExit(), 0);
  EXPECT_EQ(demo.NewLines(), kAnnounced + kRestarted) << "what was begun is done first";
}

}  // namespace
