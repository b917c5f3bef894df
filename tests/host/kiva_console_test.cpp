// SPDX-License-Identifier: MIT
// The console of this very machine on one of its virtual terminals. Its logins, its run folder and
// its settings are the test's own, in a mount namespace that goes with the program.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include "console/fact_format.h"
#include "console/welcome_content.h"
#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "harness/virtual_terminal.h"
#include "ui/markup_text.h"

using namespace Harness;

namespace {

constexpr Colours kWhiteOnDarkGrey{7, 6}, kBlackOnAmber{0, 3}, kDarkGreyOnAmber{6, 3};

constexpr const char* kPrepare = R"(
set -e
stty -g > "$FOLDER/attributes"
mount -t tmpfs tmpfs /run
mkdir /run/corvo
: > /run/corvo/show-kiva-login
mount --bind "$FOLDER/pam.d" /etc/pam.d
if [ -d /etc/corvo ]; then mount -t tmpfs tmpfs /etc/corvo; fi
exec "$0")";

/// The first line that a shell prints, without the blanks around it.
std::string output(const std::string& script) {
  return Kiva::squeezeBlanks(HostLinux::ended(script + " | head -n 1").output);
}

class KivaConsole : public testing::Test {
 protected:
  void SetUp() override {
    std::string reason;
    if (!VirtualTerminal::Available(reason)) GTEST_SKIP() << reason;
    if (HostLinux::ended("unshare -m true").status != 0)
      GTEST_SKIP() << "no mount namespace of its own for this user";
    const std::string matrix = HostLinux::matrixModule();
    if (matrix.empty()) GTEST_SKIP() << "no pam_matrix.so (package libpam-wrapper)";
    const std::string stack = " required " + matrix + " passdb=" + File("passdb") + "\n";
    folder_.Write("passdb", "root:secret:kiva\n");
    folder_.Write("pam.d/kiva", "auth" + stack + "account" + stack);
  }

  std::string File(const char* name) const { return (folder_.Path() / name).string(); }

  Launch Kiva(std::optional<std::string> term) const {
    return {{"/usr/bin/unshare", "-m", "/bin/sh", "-c", kPrepare, KIVA_BINARY_DIR "/kiva"},
            std::move(term),
            {{"FOLDER", folder_.Path().string()}}};
  }

  void ExpectAttributesAsBefore(const VirtualTerminal& terminal) const {
    const std::string before = output("cat " + File("attributes"));
    EXPECT_FALSE(before.empty());
    EXPECT_EQ(output("stty -g <" + terminal.Path()), before);
  }

  TemporaryFolder folder_;
};

void expectText(const Screen& screen, const std::string& text, Colours colours) {
  const auto place = screen.Find(text);
  ASSERT_TRUE(place) << text << "\n" << screen.Dump();
  EXPECT_EQ(screen.ColoursAt(place->row, place->column), colours) << text;
}

TEST_F(KivaConsole, ShowsThisMachineAndLetsAnOperatorIn) {
  VirtualTerminal terminal(Kiva("no-such-type"));
  const Screen welcome = terminal.WaitFor("Shut Down/Restart");
  const auto kibibytes = std::stoull(output("grep MemTotal /proc/meminfo | tr -dc 0-9"));
  expectText(welcome, Kiva::welcomeMemoryText(kibibytes * 1024), kWhiteOnDarkGrey);
  const std::string processor = output("grep '^model name' /proc/cpuinfo | cut -d: -f2-");
  expectText(welcome, Kiva::processorText(processor, 1), kWhiteOnDarkGrey);
  if (const std::string name = output("uname -n | cut -d. -f1"); name != "localhost")
    expectText(welcome, "https://" + name, kBlackOnAmber);
  expectText(welcome, "<F2>", kBlackOnAmber);
  expectText(welcome, "Customize System", kDarkGreyOnAmber);
  EXPECT_EQ(welcome.At(0, 0).text, "┌");
  EXPECT_EQ(welcome.ColoursAt(0, 0), kWhiteOnDarkGrey);

  terminal.Press("F2");
  const Screen login = terminal.WaitFor("Authentication Required");
  EXPECT_TRUE(login.Shows("Configured Keyboard (")) << login.Dump();
  EXPECT_EQ(login.cursor.row, login.Find("Login Name:")->row);
  terminal.Do({"F1", "F4", "F5"});
  EXPECT_EQ(terminal.Look(), login) << "none of these says anything here";
  terminal.Press("F3");
  EXPECT_TRUE(terminal.Look().Shows("PIN:"));
  terminal.Do({"F3", "Enter", "type:Secret", "Enter", "wait:Authentication failed", "Enter",
               "type:secret", "Enter"});
  const Screen menu = terminal.WaitFor("System Customization");
  EXPECT_EQ(menu.ColoursAt(4, 2), (Colours{7, 0})) << "the first entry has the focus";
  expectText(menu, "Configure Keyboard", kBlackOnAmber);
  const auto before = std::chrono::steady_clock::now();
  terminal.Do({"Esc", "wait:Shut Down/Restart"});
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(900))
      << "Escape waits for no sequence here";
  EXPECT_EQ(terminal.Look().Text(), welcome.Text());

  terminal.Signal(SIGTERM);
  EXPECT_EQ(terminal.WaitForExit(), 0);
  ExpectAttributesAsBefore(terminal);
}

TEST_F(KivaConsole, KnowsItsTerminalWithoutBeingTold) {
  VirtualTerminal terminal(Kiva(std::nullopt));
  const Screen welcome = terminal.WaitFor("Shut Down/Restart");
  expectText(welcome, "<F2>", kBlackOnAmber);
  terminal.Press("F4");
  EXPECT_EQ(terminal.Look().At(23, 2).colours.background, 0) << "monochrome";
  terminal.Press("F4");
  EXPECT_EQ(terminal.Look(), welcome);
  terminal.Do({"F12", "wait:Authentication Required"});
  terminal.Signal(SIGINT);
  EXPECT_EQ(terminal.WaitForExit(), 0);
  ExpectAttributesAsBefore(terminal);
}

}  // namespace
