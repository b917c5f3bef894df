// SPDX-License-Identifier: MIT
#include "network/restore/host_local_port.h"

#include <gtest/gtest.h>

using namespace Kiva;
using HostCtl::Network::DistributedPort;

namespace {

using Names = std::vector<std::string>;

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
