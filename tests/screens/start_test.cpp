// SPDX-License-Identifier: MIT
// How the program starts and ends: arguments, terminals, the pid file, broken surroundings;
// and what it executes: a sample host must never reach a tool of the machine.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>

#include <csignal>
#include <cstring>
#include <set>

#include "harness/demo.h"
#include "hostctl/lib/descriptor.h"

using namespace Harness;

namespace {

namespace fs = std::filesystem;

constexpr const char* kPidFile = "/var/run/kiva.pid";

fs::path terminalOf(const Console& console) {
  return fs::read_symlink("/proc/" + std::to_string(console.Pid()) + "/fd/0");
}

termios attributesOf(const fs::path& terminal) {
  const HostCtl::Lib::Descriptor descriptor(open(terminal.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios attributes{};
  EXPECT_EQ(tcgetattr(descriptor.Get(), &attributes), 0);
  return attributes;
}

TEST(Start, TakesAVirtualTerminalsNumber) {
  for (const std::string argument : {"0", "64", "abc", "", "63x", "63"}) {
    const bool valid = argument.starts_with("63");
    Demo demo({}, {.arguments = {argument}});
    const Lines refusal = {"log.err\tInvalid VT specified for KIVA: " + argument};
    EXPECT_EQ(demo.NewLines(), (valid ? Lines{} : refusal) + Lines{"log.info\tStarting KIVA"});
    EXPECT_EQ(attributesOf(terminalOf(demo)).c_cc[VSUSP] == 0, valid) << "no suspend key";
  }
}

TEST(Start, ChoosesTheTerminalType) {
  /// The type; whether it has colours, is taken for the local console, and is replaced by another.
  const std::tuple<std::optional<std::string>, bool, bool, bool> types[] = {
      {std::nullopt, 0, 0, 0}, {"no-such-type", 0, 0, 1},  {"", 0, 0, 1},
      {"dumb", 0, 0, 1},       {"vt102", 0, 0, 0},         {"linux", 0, 0, 0},
      {"xterm", 0, 1, 0},      {"xterm-256color", 1, 0, 0}};
  for (const auto& [type, hasColours, isLocal, isReplaced] : types) {
    const std::string term = type.value_or("none");
    SCOPED_TRACE(term);
    Demo demo({}, {.term = type});
    const Screen welcome = demo.WaitFor(kWelcome);
    EXPECT_EQ(isAllIn(welcome, {}), !hasColours);
    EXPECT_EQ(welcome.At(1, 1).reverse, !hasColours) << "the dark area, in standout";
    EXPECT_FALSE(welcome.At(22, 1).reverse) << "the bright area, plain";
    const Lines replaced = {"Cannot drive a terminal of type \"" + term + "\", using vt102"};
    EXPECT_EQ(demo.host.Journal("log.err"), isReplaced ? replaced : Lines{});
    logIn(demo);
    EXPECT_EQ(demo.Look().Shows("Configure Keyboard"), isLocal);
    EXPECT_EQ(isAllIn(demo.Look(), {}), !hasColours);
    EXPECT_EQ(demo.Look().At(4, 10).reverse, !hasColours) << "the selected entry";
  }
  Demo remote({}, {.term = "xterm", .environment = {{"SSH_CLIENT", "::1 50000 22"}}});
  logIn(remote);
  EXPECT_FALSE(remote.Look().Shows("Configure Keyboard"));
}

TEST(Start, ChangesPaletteAndTerminalUntilItEnds) {
  const std::vector<PaletteChange> ours = {
      {3, 0xffcc00}, {6, 0x555555}, {2, 0xaaaaaa}, {7, 0xffffff}, {1, 0xff0000}};
  const termios before = attributesOf(Pty({25, 80}).Path());
  for (const char* term : {"xterm-256color", "xterm", "vt102"}) {
    SCOPED_TRACE(term);
    Demo demo({}, {.term = term});
    const bool colours = std::string_view(term) == "xterm-256color";
    EXPECT_EQ(demo.Palette().Changes(), colours ? ours : std::vector<PaletteChange>{});
    openLogin(demo);
    const fs::path path = terminalOf(demo);
    ASSERT_EQ(attributesOf(path).c_lflag & ECHO, 0U);
    ASSERT_EQ(demo.Stop(), 0);
    const termios after = attributesOf(path);
    EXPECT_EQ(std::memcmp(&after, &before, sizeof after), 0);
    EXPECT_TRUE(demo.Look().cursorVisible);
    EXPECT_EQ(demo.Palette().Redefined(3), std::nullopt);
  }
}

TEST(Start, AnExceptionOfTheHostEndsItOrderly) {
  Demo faulty(failing("GetVendorName", "the {board} is silent"));
  EXPECT_EQ(faulty.WaitForExit(), 0);
  EXPECT_EQ(faulty.NewLines().back(), "log.err\tKIVA aborted by exception: the {board} is silent");
  EXPECT_TRUE(faulty.Output().ends_with("\033]R"));
  EXPECT_EQ(faulty.Palette().Redefined(3), std::nullopt);
}

TEST(Start, NoFaultOfTheHostCrashesIt) {
  for (const std::string& operation :
       parts("FindOption GetAdapters GetAllSlots GetBiosData GetBmcVersion GetBootOption "
             "GetConnectionPoint GetDomain GetFirewallRulesets GetHost GetHostname GetIpConfig "
             "GetKeyboardLayout GetKeyboardLayouts GetManagementInterface GetModelName "
             "GetModuleVersion GetNameServers GetNumCpuPackages GetPageSize GetPnics "
             "GetProductName GetSearchDomains GetSerialNumber GetServiceTag GetTarnDefaultGateway "
             "GetToken GetTotalPages GetVendorName GetVersion GetWelcomeMessage Refresh "
             "SetSystemAlert UpdateManagementInterface",
             ' ')) {
    SCOPED_TRACE(operation);
    Demo demo(failing(operation, "rehearsed"),
              {.term = "xterm", .environment = kQuickEscape.environment});
    demo.Do({"F2", "Enter", "type:demo", "Enter"});
    demo.Press("Down", 12);
    demo.Press("Esc");
    ASSERT_EQ(demo.Stop(), 0);
    for (const std::string& line : demo.host.Journal("log.err"))
      EXPECT_EQ(line.find("unexpected"), std::string::npos) << line;
  }
}

TEST(Start, EndsWithoutInputAndGoesOnWithoutOutput) {
  for (const char* script : {R"(exec "$0" "$@" </dev/null)", R"(exec "$0" "$@" <&-)",
                             R"(true | "$0" "$@")", R"(exec "$0" "$@" </dev/null >&- 2>&-)"}) {
    SCOPED_TRACE(script);
    Demo demo({}, {.script = script});
    EXPECT_EQ(demo.WaitForExit(), 0);
  }
  Demo demo({}, {.script = R"(exec "$0" "$@" >&-)"});
  demo.WaitForLine("log.info", "Starting KIVA");
  EXPECT_TRUE(demo.StaysIdle());
  EXPECT_EQ(demo.Stop(), 0);
}

TEST(Start, WritesThePidFileUnlessItNamesALiveProcess) {
  const std::string live = std::to_string(getpid()) + "\n", endless(100, '9');
  for (const std::string& content :
       Lines{"none", "4194304999", "abc", "", "-1", "0", endless, live}) {
    SCOPED_TRACE(content);
    const bool kept = content == live;
    DemoHost host;
    if (content != "none") std::ofstream(host.Root(kPidFile)) << content;
    Demo demo({}, std::move(host));
    EXPECT_EQ(contentOf(demo.host.Root(kPidFile)), kept ? content : std::to_string(demo.Pid()));
    const Lines told = {"Attempt to run multiple KIVA instances, not updating /var/run/kiva.pid"};
    EXPECT_EQ(demo.host.Journal("log.err"), kept ? told : Lines{});
  }
}

TEST(Start, ChildrenAnswerThoughTheirEndWasIgnored) {
  Demo demo(Json{{"lockdown", {{"enabled", true}, {"possible", false}}}},
            {.script = R"(exec env --ignore-signal=CHLD "$0" "$@")"});
  openMenu(demo, 1);
  demo.WaitFor("Enabled");
  EXPECT_EQ(demo.host.Journal("run"),
            Lines{"/bin/hmx-cmd hmx-cmd -U kiva hmxsvc/auth/lockdown_is_enabled"});
}

/// What the kernel says was executed.
TEST(SampleHost, RunsNothingOfTheMachineButThePager) {
  if (!std::filesystem::exists("/usr/bin/strace")) GTEST_SKIP() << "no strace on this machine";
  Demo demo(
      {{"welcomeMessage", "{hostname} {ssl-thumbprint} {ssh-rsa-fingerprint}"}},
      {.script =
           R"(export ASAN_OPTIONS=detect_leaks=0; exec strace -D -f -qq -e trace=execve -o "$2/trace" "$0" "$@")"});
  const auto executed = [&] {
    std::set<std::string> programs;
    std::ifstream file(demo.host.Directory() / "trace");
    for (std::string line; std::getline(file, line, '"');)
      if (line.ends_with("execve(") && std::getline(file, line, '"'))
        programs.insert(std::filesystem::path(line).filename());
    return programs;
  };
  demo.WaitForPassing("halo-01.example.test");
  if (executed().empty()) GTEST_SKIP() << "this machine lets nobody trace";
  demo.Do({"F2", "Down", "type:demo", "Enter", "wait:System Customization"});
  // The leak check fails under a tracer, and with it what a sanitized tool answers, so the way to
  // the logs is counted from the end, where no answer changes it.
  demo.Press("Down", 9);
  demo.Press("Up", 2);
  demo.Type("1");
  demo.WaitForPassing("<Q> Quit");
  demo.Do({"type:q", "wait:System Customization"});
  EXPECT_EQ(executed(), (std::set<std::string>{"kiva-demo", "kiva-demo-tools", "less"}));
}

}  // namespace
