// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "network/restore/names.h"

using namespace Kiva;

namespace {

TEST(RestoreNames, MayBeASwitchsOrAPortGroups) {
  const struct {
    std::string name;
    bool ofSwitch, ofPortGroup;
  } cases[] = {{"", false, false},
               {".", false, false},
               {"..", false, false},
               {"...", true, true},
               {"vSwitch_1.2-a", true, true},
               {std::string(32, 'a'), true, true},
               {std::string(33, 'a'), false, true},
               {std::string(64, 'a'), false, true},
               {std::string(65, 'a'), false, false},
               {"a/b", false, false},
               {"a b", false, true},
               {" a", false, false},
               {"a ", false, false},
               {"a\nb", false, false},
               {"a\x7f", false, false},
               {"\xc3\xa4", false, false},
               {"{hostname}", false, true}};
  for (const auto& [name, ofSwitch, ofPortGroup] : cases) {
    EXPECT_EQ(isSwitchName(name), ofSwitch) << name;
    EXPECT_EQ(isPortGroupName(name), ofPortGroup) << name;
  }
}

TEST(RestoreNames, TheFirstFreeOneFillsGaps) {
  EXPECT_EQ(firstFreeName("vSwitch", {}), "vSwitch0");
  EXPECT_EQ(firstFreeName("vSwitch", {"vSwitch2", "vSwitch0", "vSwitch01"}), "vSwitch1");
}

}  // namespace
