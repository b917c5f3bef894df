// SPDX-License-Identifier: MIT
#include "network/management_interface.h"

#include <gtest/gtest.h>

#include "harness/demo_host.h"
#include "harness/hosts/machine.h"
#include "sample/sample_host.h"

using namespace Kiva;

namespace {

using Texts = std::vector<std::string>;

TEST(ManagementInterface, SaysWhatItHangsOn) {
  const std::string opaque = "Opaque network connectee type not supported",
                    none = "Unsupported connectee type", unsupported = "Unsupported vSwitch type";
  const std::tuple<const char*, std::string, bool, Texts> cases[] = {
      {"standard", "vSwitch0", false, {}},
      {"distributed", "vSwitch0", true, {unsupported}},
      {"opaque", "", false, {opaque, unsupported}},
      {"unknown", "", false, {none, unsupported}}};
  for (const auto& [type, name, distributed, errors] : cases) {
    Harness::DemoHost host;
    host.Set("/network/kernelNics/0/connection/type", type);
    HostSample::useSampleHost(host.Directory());
    const auto interface = findManagementInterface();
    std::int16_t vlanId = 5;
    EXPECT_EQ(getSwitchName(*interface), name);
    EXPECT_EQ(isOnDistributedSwitch(), distributed);
    EXPECT_EQ(HostLinux::failureOf([&] { getVlanId(*interface, vlanId); }),
              errors.empty() ? "" : unsupported);
    EXPECT_EQ(readUplinks(*interface).trouble, errors.empty() ? "" : unsupported);
    EXPECT_EQ(vlanId, 0);
    EXPECT_EQ(host.Journal("log.err"), errors);
  }
}

TEST(ManagementInterface, AnswersForAHostThatFails) {
  Harness::DemoHost host;
  HostSample::useSampleHost(host.Directory());
  const auto interface = findManagementInterface();
  int most = 0;
  EXPECT_TRUE(getMaxActiveUplinks(*interface, most));
  EXPECT_EQ(most, 1);
  Texts uplinks = {"pnic9"};
  host.Set("/faults", {{"GetConnectionPoint", "c"}});
  EXPECT_FALSE(getMaxActiveUplinks(*interface, most) || getUplinks(*interface, uplinks) ||
               isOnDistributedSwitch());
  EXPECT_EQ(uplinks, Texts{});
  EXPECT_EQ(getSwitchName(*interface), "");
  EXPECT_EQ(host.Journal("log.err"),
            (Texts{"Getting max number of active uplinks failed: c", "Getting uplinks failed: c",
                   "Could not determine if a DVS was in use: c", "Getting switch name failed: c"}));
}

}  // namespace
