// SPDX-License-Identifier: MIT
// What an operator sees and does at the keyboard and the screen of a whole machine.
#include <algorithm>
#include <cstdlib>

#include "tests/vm/installed_machine.h"

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
  if (const char* file = std::getenv("KIVA_VM_PICTURE")) machine_->WritePng(file);
}

}  // namespace
