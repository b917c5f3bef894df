// SPDX-License-Identifier: MIT
// How the program starts and ends: arguments, terminals, the pid file, broken surroundings.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <termios.h>

#include <csignal>
#include <cstring>
#include <sstream>

#include "harness/terminal.h"
#include "hostctl/lib/descriptor.h"
#include "tests/screens/steps.h"

namespace Harness {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using Lines = std::vector<std::string>;

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

/// The demo, started by a shell that runs `script`; "$0" "$@" there is the demo's command line.
Launch throughShell(const DemoHost& host, const std::string& script) {
  Launch launch = host.Demo();
  launch.arguments.insert(launch.arguments.begin(), {"/bin/sh", "-c", script});
  return launch;
}

std::string textOf(const fs::path& file) {
  std::ifstream in(file);
  return {std::istreambuf_iterator<char>(in), {}};
}

bool hasColours(const Screen& screen) {
  for (int row = 0; row < screen.GetSize().rows; ++row)
    for (int column = 0; column < screen.GetSize().columns; ++column)
      if (screen.ColoursAt(row, column) != Colours{}) return true;
  return false;
}

TEST(Start, TakesAVirtualTerminalsNumber) {
  for (const std::string argument : {"0", "64", "abc", "", "63x", "63", "none"}) {
    SCOPED_TRACE(argument);
    const bool none = argument == "none", valid = none || argument.starts_with("63");
    const DemoHost host;
    Terminal terminal(host.Demo(none ? Lines{} : Lines{argument}));
    terminal.WaitFor(kWelcome);
    Lines expected = {"log.info\tStarting KIVA"};
    if (!valid)
      expected.insert(expected.begin(), "log.err\tInvalid VT specified for KIVA: " + argument);
    EXPECT_EQ(host.Journal(), expected);
    const bool suspendKey = attributesOf(terminalOf(terminal)).c_cc[VSUSP] != 0;
    EXPECT_EQ(suspendKey, !valid || none);
  }
}

TEST(Start, ChoosesTheTerminalType) {
  const std::map<std::string, std::string> overSsh = {{"SSH_CLIENT", "::1 50000 22"}};
  const auto replaced = [](const std::string& type) {
    return Lines{"Cannot drive a terminal of type \"" + type + "\", using vt102"};
  };
  struct Case {
    std::optional<std::string> term;
    std::map<std::string, std::string> environment;
    bool colours;
    bool localConsole;
    Lines errors;
  };
  for (const Case& c :
       {Case{std::nullopt, {}, false, false, {}},
        Case{"no-such-type", {}, false, false, replaced("no-such-type")},
        Case{"", {}, false, false, replaced("")}, Case{"dumb", {}, false, false, replaced("dumb")},
        Case{"vt102", {}, false, false, {}}, Case{"linux", {}, false, false, {}},
        Case{"xterm", {}, false, true, {}}, Case{"xterm", overSsh, false, false, {}},
        Case{"xterm-256color", {}, true, false, {}}}) {
    SCOPED_TRACE(c.term.value_or("none"));
    const DemoHost host;
    Launch launch = host.Demo();
    launch.term = c.term;
    launch.environment = c.environment;
    Terminal terminal(launch);
    const Screen welcome = terminal.WaitFor(kWelcome);
    EXPECT_EQ(hasColours(welcome), c.colours);
    EXPECT_EQ(welcome.At(1, 1).reverse, !c.colours) << "the dark area, in standout";
    EXPECT_FALSE(welcome.At(22, 1).reverse) << "the bright area, plain";
    EXPECT_EQ(host.Journal("log.err"), c.errors);
    logIn(terminal);
    EXPECT_EQ(terminal.Look().Shows("Configure Keyboard"), c.localConsole);
    EXPECT_EQ(hasColours(terminal.Look()), c.colours);
    EXPECT_EQ(terminal.Look().At(4, 10).reverse, !c.colours) << "the selected entry";
  }
}

TEST(Start, RedefinesThePaletteUntilItEnds) {
  const std::vector<PaletteChange> ours = {
      {3, 0xffcc00}, {6, 0x555555}, {2, 0xaaaaaa}, {7, 0xffffff}, {1, 0xff0000}};
  const DemoHost host;
  Terminal terminal(host.Demo());
  const Screen welcome = terminal.WaitFor(kWelcome);
  EXPECT_EQ(terminal.Palette().Changes(), ours);
  EXPECT_EQ(welcome.ColoursAt(1, 1).background, 6);
  EXPECT_EQ(welcome.ColoursAt(22, 1).background, 3);
  terminal.Signal(SIGTERM);
  EXPECT_EQ(terminal.WaitForExit(), 0);
  EXPECT_EQ(terminal.Palette().Redefined(3), std::nullopt);

  Terminal monochrome(Launch{host.Demo().arguments, "vt102", {}});
  monochrome.WaitFor(kWelcome);
  EXPECT_TRUE(monochrome.Palette().Changes().empty());
}

TEST(Start, LeavesTheTerminalAsItWas) {
  const termios before = attributesOf(Pty({25, 80}).Path());
  for (const char* term : {"xterm-256color", "xterm", "vt102"}) {
    SCOPED_TRACE(term);
    const DemoHost host;
    Terminal terminal(Launch{host.Demo().arguments, term, {}});
    openLogin(terminal);
    const fs::path path = terminalOf(terminal);
    ASSERT_EQ(attributesOf(path).c_lflag & ECHO, 0U);
    terminal.Signal(SIGTERM);
    ASSERT_EQ(terminal.WaitForExit(), 0);
    const termios after = attributesOf(path);
    EXPECT_EQ(std::memcmp(&after, &before, sizeof after), 0);
    EXPECT_TRUE(terminal.Look().cursorVisible);
  }
}

TEST(Start, AnExceptionOfTheHostEndsItOrderly) {
  const DemoHost failing(Json{{"faults", {{"GetVendorName", "the {board} is silent"}}}});
  Terminal terminal(failing.Demo());
  EXPECT_EQ(terminal.WaitForExit(), 0);
  EXPECT_EQ(failing.Journal("log.err"), Lines{"KIVA aborted by exception: the {board} is silent"});
  EXPECT_TRUE(terminal.Output().ends_with("\033]R"));
  EXPECT_EQ(terminal.Palette().Redefined(3), std::nullopt);

  const DemoHost spoilt;
  Terminal running(spoilt.Demo());
  running.WaitFor(kWelcome);
  std::ofstream(spoilt.Directory() / "host.json") << "{";
  running.Send("x");
  EXPECT_EQ(running.WaitForExit(), 0);
  EXPECT_EQ(spoilt.Journal("log.err"),
            Lines{"KIVA aborted by exception: HOST/host.json: line 1 is not JSON"});
}

TEST(Start, NoFaultOfTheHostCrashesIt) {
  std::istringstream operations(
      "FindOption GetAdapters GetAllSlots GetBiosData GetBmcVersion GetBootOption "
      "GetConnectionPoint GetDomain GetFirewallRulesets GetHost GetHostname GetIpConfig "
      "GetKeyboardLayout GetKeyboardLayouts GetManagementInterface GetModelName "
      "GetModuleVersion GetNameServers GetNumCpuPackages GetPageSize GetPnics GetProductName "
      "GetSearchDomains GetSerialNumber GetServiceTag GetTarnDefaultGateway GetToken "
      "GetTotalPages GetVendorName GetVersion GetWelcomeMessage Refresh SetSystemAlert "
      "UpdateManagementInterface");
  for (std::string operation; operations >> operation;) {
    SCOPED_TRACE(operation);
    const DemoHost host(Json{{"faults", {{operation, "rehearsed"}}}});
    Terminal terminal(Launch{host.Demo().arguments, "xterm", {{"ESCDELAY", "25"}}});
    terminal.Settle();
    terminal.Do({"F2", "Enter", "type:demo", "Enter"});
    terminal.Press("Down", 12);
    terminal.Press("Esc");
    terminal.Signal(SIGTERM);
    ASSERT_EQ(terminal.WaitForExit(), 0);
    for (const std::string& line : host.Journal("log.err"))
      EXPECT_EQ(line.find("unexpected"), std::string::npos) << line;
  }
}

long secondsOfChildren() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec;
}

TEST(Start, EndsWithoutInput) {
  const long before = secondsOfChildren();
  for (const char* script : {R"(exec "$0" "$@" </dev/null)", R"(exec "$0" "$@" <&-)",
                             R"(true | "$0" "$@")", R"(exec "$0" "$@" </dev/null >&- 2>&-)"}) {
    SCOPED_TRACE(script);
    const DemoHost host;
    Terminal terminal(throughShell(host, script));
    EXPECT_EQ(terminal.WaitForExit(), 0);
  }
  EXPECT_LT(secondsOfChildren() - before, 10) << "four starts, no busy loop";
}

TEST(Start, GoesOnWithoutOutput) {
  const DemoHost host;
  Terminal terminal(throughShell(host, R"(exec "$0" "$@" >&-)"));
  waitForLine(terminal, host, "log.info", "Starting KIVA");
  EXPECT_TRUE(staysIdle(terminal));
  terminal.Signal(SIGTERM);
  EXPECT_EQ(terminal.WaitForExit(), 0);
}

TEST(Start, ATerminalThatGoesAwayEndsIt) {
  for (void (*reach)(Console&) :
       {+[](Console& console) { console.WaitFor(kWelcome); },
        +[](Console& console) { openLogin(console); }, +[](Console& console) { logIn(console); }}) {
    const DemoHost host;
    Terminal terminal(host.Demo());
    reach(terminal);
    terminal.HangUp();
    EXPECT_EQ(terminal.WaitForExit(), 0);
  }
}

TEST(Start, WritesThePidFileUnlessItNamesALiveProcess) {
  struct Case {
    const char* name;
    std::optional<std::string> content;
    bool kept;
  };
  for (const auto& [name, content, kept] :
       {Case{"none", {}, false}, Case{"stale", "4194304999", false}, Case{"garbage", "abc", false},
        Case{"empty", "", false}, Case{"negative", "-1", false}, Case{"zero", "0", false},
        Case{"too large", "99999999999999999999999", false},
        Case{"longer than ours", std::string(100, 'x'), false},
        Case{"live", std::to_string(getpid()) + "\n", true}}) {
    SCOPED_TRACE(name);
    const DemoHost host;
    fs::create_directories(host.Root("/var/run"));
    if (content) std::ofstream(host.Root(kPidFile)) << *content;
    Terminal terminal(host.Demo());
    terminal.WaitFor(kWelcome);
    EXPECT_EQ(textOf(host.Root(kPidFile)), kept ? *content : std::to_string(terminal.Pid()));
    Lines errors;
    if (kept) errors = {"Attempt to run multiple KIVA instances, not updating /var/run/kiva.pid"};
    EXPECT_EQ(host.Journal("log.err"), errors);
  }
}

TEST(Start, ASecondInstanceRunsBesideTheFirst) {
  const DemoHost host;
  Terminal first(host.Demo());
  first.WaitFor(kWelcome);
  Terminal second(host.Demo());
  logIn(second);
  second.Signal(SIGTERM);
  EXPECT_EQ(second.WaitForExit(), 0);
  EXPECT_EQ(textOf(host.Root(kPidFile)), std::to_string(first.Pid()));
  logIn(first);
}

TEST(Start, ChildrenAnswerThoughTheirEndWasIgnored) {
  const DemoHost host(Json{{"lockdown", {{"enabled", true}}}});
  Terminal terminal(throughShell(host, R"(exec env --ignore-signal=CHLD "$0" "$@")"));
  logIn(terminal);
  terminal.Press("Down");
  EXPECT_TRUE(terminal.Look().Shows("Enabled")) << terminal.Look().Dump();
}

}  // namespace
}  // namespace Harness
