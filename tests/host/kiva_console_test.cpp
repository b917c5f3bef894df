// SPDX-License-Identifier: MIT
// The console of this very machine on one of its virtual terminals. Its logins, its run folder and
// its settings are the test's own, in a mount namespace that goes with the program.
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>

#include "console/fact_format.h"
#include "console/welcome_content.h"
#include "harness/virtual_terminal.h"
#include "tests/support/recording_platform.h"

namespace Harness {
namespace {

constexpr Colours kWhiteOnDarkGrey{7, 6};
constexpr Colours kBlackOnAmber{0, 3};
constexpr Colours kDarkGreyOnAmber{6, 3};
constexpr Colours kWhiteOnBlack{7, 0};

constexpr const char* kPrepare = R"(
set -e
stty -g > "$FOLDER/attributes"
mount -t tmpfs tmpfs /run
mkdir /run/corvo
: > /run/corvo/show-kiva-login
mount --bind "$FOLDER/pam.d" /etc/pam.d
if [ -d /etc/corvo ]; then mount -t tmpfs tmpfs /etc/corvo; fi
exec "$0")";

std::string matrixModule() {
  for (const char* folder : {"/usr/lib/x86_64-linux-gnu", "/usr/lib/aarch64-linux-gnu", "/usr/lib"})
    if (const auto path = std::string(folder) + "/pam_wrapper/pam_matrix.so";
        std::filesystem::exists(path))
      return path;
  return {};
}

std::string output(const std::string& command) {
  FILE* pipe = popen(command.c_str(), "r");
  std::string text;
  for (int byte = 0; pipe && (byte = std::fgetc(pipe)) != EOF;) text += static_cast<char>(byte);
  if (pipe) pclose(pipe);
  return text;
}

/// The rest of the first line of a file that begins so, without the colon and blanks around it.
std::string valueIn(const char* file, const std::string& key) {
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);)
    if (line.starts_with(key) && line.find(':') != std::string::npos)
      return line.substr(line.find_first_not_of(" \t", line.find(':') + 1));
  return {};
}

std::string hostName() {
  std::array<char, 256> name{};
  gethostname(name.data(), name.size() - 1);
  const std::string text = name.data();
  return text.substr(0, text.find('.'));
}

class KivaConsole : public testing::Test {
 protected:
  void SetUp() override {
    std::string reason;
    if (!VirtualTerminal::Available(reason)) GTEST_SKIP() << reason;
    if (!output("unshare -m true 2>&1 || echo no").empty())
      GTEST_SKIP() << "no mount namespace of its own for this user";
    const std::string matrix = matrixModule();
    if (matrix.empty()) GTEST_SKIP() << "no pam_matrix.so (package libpam-wrapper)";
    const std::string stack = " required " + matrix + " passdb=" + File("passdb") + "\n";
    std::filesystem::create_directory(File("pam.d"));
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
  expectText(welcome, "Memory", kWhiteOnDarkGrey);
  const auto kibibytes = std::stoull("0" + valueIn("/proc/meminfo", "MemTotal"));
  expectText(welcome, Kiva::welcomeMemoryText(kibibytes * 1024), kWhiteOnDarkGrey);
  const std::string processor = valueIn("/proc/cpuinfo", "model name");
  expectText(welcome, Kiva::processorText(processor, 1), kWhiteOnDarkGrey);
  if (hostName() != "localhost") expectText(welcome, "https://" + hostName(), kBlackOnAmber);
  expectText(welcome, "<F2>", kBlackOnAmber);
  expectText(welcome, "Customize System", kDarkGreyOnAmber);
  EXPECT_EQ(welcome.At(0, 0).text, "┌");
  EXPECT_EQ(welcome.ColoursAt(0, 0), kWhiteOnDarkGrey);

  terminal.Press("F2");
  const Screen login = terminal.WaitFor("Authentication Required");
  EXPECT_TRUE(login.Shows("Configured Keyboard (")) << login.Dump();
  EXPECT_EQ(login.cursor.row, login.Find("Login Name:")->row);
  for (const char* key : {"F1", "F4", "F5"}) {
    terminal.Press(key);
    EXPECT_EQ(terminal.Look(), login) << key;
  }
  terminal.Press("F3");
  EXPECT_TRUE(terminal.Look().Shows("PIN:"));
  terminal.Press("F3");
  terminal.Press("Enter");
  terminal.Type("Secret");
  terminal.Press("Enter");
  terminal.WaitFor("Authentication failed");
  terminal.Press("Enter");
  terminal.Type("secret");
  terminal.Press("Enter");
  const Screen menu = terminal.WaitFor("System Customization");
  EXPECT_EQ(menu.ColoursAt(4, 2), kWhiteOnBlack) << "the first entry has the focus";
  expectText(menu, "Configure Keyboard", kBlackOnAmber);
  const auto before = std::chrono::steady_clock::now();
  terminal.Press("Esc");
  terminal.WaitFor("Shut Down/Restart");
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
  terminal.Press("F12");
  terminal.WaitFor("Authentication Required");
  terminal.Signal(SIGINT);
  EXPECT_EQ(terminal.WaitForExit(), 0);
  ExpectAttributesAsBefore(terminal);
}

}  // namespace
}  // namespace Harness
