// SPDX-License-Identifier: MIT
// What the network restore options make of names and ports.
#include <gtest/gtest.h>

#include "hostctl/network/switch_names.h"
#include "network/restore/host_local_port.h"
#include "network/restore/names.h"

using namespace Kiva;
using namespace HostCtl::Network;

namespace {

using Names = std::vector<std::string>;

TEST(RestoreNames, MayBeASwitchsOrAPortGroups) {
  const auto of = [](std::size_t length) { return std::string(length, 'a'); };
  const Names both = {"vSwitch999", "v_1.2-a", of(10)},
              portGroup = {"...",        "-a",   "1",    "all", "default",   "a-bond",
                           "tarn0-port", of(11), of(64), "a b", "{hostname}"},
              none = {"", ".", "..", of(65), "a/b", " a", "a ", "a\nb", "a\x7f", "\xc3\xa4"};
  const std::tuple<Names, bool, bool> cases[] = {
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

TEST(HostLocalPort, IsTheOneThatAConsoleNamed) {
  for (const char* name : {"host-local-0", "host-local-007", "host-local-99999999999999999999"})
    EXPECT_TRUE(isHostLocalPort(name)) << name;
  for (const char* name : {"", "7", "host-local-", "host-local-x", "host-local-1a",
                           "a-host-local-1", "Host-Local-1", "host-local--1", "host-local-1\n"})
    EXPECT_FALSE(isHostLocalPort(name)) << name;
}

DistributedPort port(const std::string& name, const std::string& nic,
                     const std::optional<Names>& uplinks) {
  return {.name = name, .nic = nic, .uplinks = uplinks};
}

TEST(HostLocalPort, UsesItsUplinksOrAllOfThem) {
  const Names all = {"pnic1", "pnic2", "pnic3"};
  const std::pair<Ports, Names> cases[] = {{{}, {}},
                                           {{port("7", "tarn1", all)}, {}},
                                           {{port("host-local-0", "tarn0", all)}, {}},
                                           {{port("host-local-0", "tarn1", Names{"pnic3", "pnic9"}),
                                             port("host-local-1", "", Names{"pnic1"})},
                                            {"pnic1", "pnic3"}},
                                           {{port("host-local-0", "tarn1", Names())}, {}},
                                           {{port("host-local-0", "tarn1", std::nullopt)}, all}};
  for (const auto& [ports, used] : cases) EXPECT_EQ(uplinksOfOthers(ports, all, "tarn0"), used);
}

}  // namespace
