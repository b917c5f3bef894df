// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "hostctl/network/switch_names.h"
#include "network/restore/names.h"

using namespace Kiva;
using HostCtl::Network::isPortGroupName;
using HostCtl::Network::isSwitchName;

namespace {

TEST(RestoreNames, MayBeASwitchsOrAPortGroups) {
  const auto of = [](std::size_t length) { return std::string(length, 'a'); };
  const std::vector<std::string> both = {"vSwitch999", "v_1.2-a", of(10)},
                                 portGroup = {"...",     "-a",     "1",          "all",
                                              "default", "a-bond", "tarn0-port", of(11),
                                              of(64),    "a b",    "{hostname}"},
                                 none = {"",   ".",  "..",   of(65),  "a/b",
                                         " a", "a ", "a\nb", "a\x7f", "\xc3\xa4"};
  const std::tuple<std::vector<std::string>, bool, bool> cases[] = {
      {both, true, true}, {portGroup, false, true}, {none, false, false}};
  for (const auto& [names, ofSwitch, ofPortGroup] : cases)
    for (const std::string& name : names) {
      EXPECT_EQ(isSwitchName(name), ofSwitch) << name;
      EXPECT_EQ(isPortGroupName(name), ofPortGroup) << name;
    }
}

TEST(RestoreNames, TheFirstFreeOneFillsGaps) {
  EXPECT_EQ(firstFreeName("vSwitch", {}), "vSwitch0");
  EXPECT_EQ(firstFreeName("vSwitch", {"vSwitch2", "vSwitch0", "vSwitch01"}), "vSwitch1");
}

}  // namespace
