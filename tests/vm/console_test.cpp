// SPDX-License-Identifier: MIT
// What an operator sees and does at the keyboard and the screen of a whole machine.
#include <algorithm>
#include <cstdlib>

#include "harness/vm/installed_machine.h"

using namespace Harness;

namespace {

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kAmber{255, 204, 0};
constexpr Rgb kDarkGrey{85, 85, 85};

class VmConsole : public InstalledMachine {};

/// Expects the cell at which `text` begins to be drawn in exactly these colours.
void expectColours(const Screendump& picture, const Screen& screen, const std::string& text,
                   const std::vector<Rgb>& colours) {
  const auto place = screen.Find(text);
  ASSERT_TRUE(place) << text << "\n" << screen.Dump();
  const auto seen = picture.ColoursOfCell(place->row, place->column);
  EXPECT_EQ(seen.size(), colours.size()) << text;
  for (const Rgb& wanted : colours) {
    const auto matches = [&](const Rgb& one) { return looksLike(one, wanted); };
    EXPECT_TRUE(std::any_of(seen.begin(), seen.end(), matches))
        << text << " has no " << wanted.red << ' ' << wanted.green << ' ' << wanted.blue;
  }
}

TEST_F(VmConsole, ShowsTheWelcomeScreenInItsOwnPalette) {
  const Screen screen = machine_->WaitFor(kWelcome);
  const Screendump picture = machine_->Photograph();
  expectColours(picture, screen, "Memory", {kWhite, kDarkGrey});
  expectColours(picture, screen, "<F2>", {kBlack, kAmber});
  expectColours(picture, screen, "Customize System", {kDarkGrey, kAmber});
  EXPECT_EQ(screen.At(0, 0).text, "┌");
  EXPECT_TRUE(screen.Shows("https://server")) << screen.Dump();
  if (const char* file = std::getenv("KIVA_VM_PICTURE"))
    machine_->Monitor(std::string("screendump \"") + file + "\" -f png");
}

TEST_F(VmConsole, ChangesThePassword) {
  const std::string fresh = "quitenewword";
  LogIn();
  Choose("Configure Password");
  machine_->Do({"wait:Old Password:", std::string("type:") + kPassword, "Tab", "type:" + fresh,
                "Tab", "type:" + fresh, "Enter", "gone:Old Password:"});
  LogOut();
  machine_->Do({"F2", std::string("wait:") + kLogin, "Down", std::string("type:") + kPassword,
                "Enter", "wait:Authentication failed", "Enter", "gone:Authentication failed",
                "type:" + fresh, "Enter", "wait:System Customization"});
}

TEST_F(VmConsole, ChangesWhatTheKeysType) {
  const auto expectTyped = [this](const std::string& text) {
    machine_->Do({"F2", std::string("wait:") + kLogin, "wait:[ root ", "type:a",
                  "wait:[ " + text + " ", "Esc", std::string("gone:") + kLogin});
  };
  expectTyped("a");
  LogIn();
  Choose("Configure Keyboard");
  Focus("( ) azerty");
  machine_->Do({"Space", "Enter", "gone:difficulty"});
  LogOut();
  expectTyped("q");

  const std::string before = BootId();
  LogIn("F12");
  machine_->Do({"wait:Remote management software", "F11"});
  WaitForNewStart(before);
  expectTyped("q");
}

TEST_F(VmConsole, ResetsTheConfiguration) {
  const std::string timeOut = "/etc/corvo/options/UserVars/KivaTimeOut";
  Shell("test -s " + timeOut + " && echo 77 >" + timeOut);
  const std::string before = BootId();
  LogIn();
  Choose("Reset System Configuration");
  machine_->Do({"wait:Reset System Configuration now?", "F11",
                "wait:Default settings are restored.", "Enter"});
  WaitForNewStart(before);
  Shell("cmp " + timeOut + " /usr/share/kiva/etc-corvo/options/UserVars/KivaTimeOut");
  Shell("ls /var/lib/corvo/backup/*");
}

TEST_F(VmConsole, SwitchesTheMachineOff) {
  LogIn("F12");
  machine_->Do({"wait:Remote management software", "F2"});
  EXPECT_EQ(machine_->WaitForPowerOff(), "guest-shutdown");
}

}  // namespace
