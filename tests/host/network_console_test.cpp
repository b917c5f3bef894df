// SPDX-License-Identifier: MIT
// The console of a machine of its own, whose management network an operator changes.
#include <gtest/gtest.h>

#include "harness/hosts/lab_console.h"

using namespace HostLinux;

namespace {

TEST(NetworkConsole, ShowsTheLeaseOfThisMachine) {
  if (const std::string why = LabConsole::Obstacle(); !why.empty()) GTEST_SKIP() << why;
  inNamespaces([] {
    const NetworkLab lab;
    lab.Configure("eth0.network", "[Match]\nName=eth0\n[Network]\nDHCP=yes\n");
    lab.StartNetworkd();
    lab.Serve("dhcp4");
    ASSERT_TRUE(waitUntil([] { return shell("ip addr show eth0 | grep -q 10.9.0.50"); }));
    LabConsole console(lab);
    console.WaitFor("https://10.9.0.50/ (DHCP)");
    console.LogIn();
    console.Do({"focus:Configure Management Network", "wait:Network identity acquired from DHCP"});
  });
}

}  // namespace
