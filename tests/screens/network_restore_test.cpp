// SPDX-License-Identifier: MIT
// The window of the network restore options.
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

const Lines kOpen = kLogIn + Lines{"choose:Network Restore Options", "wait:Create Standard Switch"};

TEST(NetworkRestore, DescribesEveryRepair) {
  const std::tuple<const char*, Lines, std::string> panes[] = {
      {"Create Standard Switch", {"Create a new standard virtual", "added."}, "Create"},
      {"Create Port Group", {"Create a new port group by name", "added."}, "Create"},
      {"Migrate Tarn NIC to Standard Switch", {"Migrate a tarnnic", "portgroup."}, "Migrate"},
      {"Restore Network Settings", {"Restoring the network", "software."}, "Restart"},
      {"Restore Standard Switch", {"All management network", "they are."}, "Restore"},
      {"Restore xDS", {"Reconfigure properties of", "moved to it."}, "Restore"}};
  for (const Size size : {Size{24, 80}, Size{43, 132}}) {
    Demo demo({}, {.size = size, .environment = kQuickEscape.environment});
    demo.Do(kOpen);
    const int half = size.columns / 2;
    for (const auto& [title, texts, action] : panes) {
      const Screen screen = demo.Look();
      SCOPED_TRACE(screen.Dump());
      EXPECT_EQ(screen.Cells(1, 3, half), "Network Restore Options");
      EXPECT_EQ(screen.Cells(1, half + 2, size.columns - 1), title);
      EXPECT_EQ(focusedText(screen), title);
      EXPECT_EQ(missingFrom(screen, texts), Lines{});
      const std::string footer = screen.Cells(size.rows - 3, half + 1, size.columns - 1);
      const auto blanks = footer.size() - action.size() - 18;
      EXPECT_EQ(footer, "<Enter> " + action + std::string(blanks, ' ') + "<Esc> Exit");
      demo.Press("Down");
    }
    demo.Do({"Esc", "wait:System Customization", "wait:To view various network restore"});
  }
}

}  // namespace
