// SPDX-License-Identifier: MIT
// The console of a machine of its own, whose broken network an operator repairs.
#include <gtest/gtest.h>

#include "harness/demo.h"
#include "harness/hosts/lab_console.h"

using namespace HostLinux;

namespace {

class RepairConsole : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string why = LabConsole::Obstacle(); !why.empty()) GTEST_SKIP() << why;
  }
};

const std::string kDone = "wait:Operation Succeeded;Enter;gone:Operation Succeeded",
                  kForm = "wait:<D> View Details;";

// What an operator does in the restore options, and a script that succeeds once it is done.
struct Repair {
  std::string what, steps, after;
};

const Repair kRepairs[] = {
    {"Create Standard Switch", kForm + "type:vSwitch1;Enter;" + kDone,
     "ip link show eth1 | grep 'master vSwitch1'"},
    {"Create Port Group", kForm + "type:Second;Down;Right;wait:< vSwitch1 >;Enter;" + kDone,
     "halocli network vswitch standard list | grep 'vSwitch1.*Second'"},
    {"Migrate Tarn NIC", kForm + "Down;Right;wait:Second/vSwitch1;Enter;" + kDone,
     "ip link show tarn0-port | grep 'master vSwitch1'"},
    {"Restore Network Settings", "wait:Yes, Reset;F11;wait:network. Done.;Enter;gone:Done.",
     "! ip link show vSwitch1 && ip link show eth0 | grep 'master vSwitch0'"}};

// The interface has its lease and reaches what lies behind the peer.
const std::string kReaches =
    " && ip addr show tarn0 | grep -w 10.9.0.50/24 && "
    "ip link show tarn0 | grep 00:16:3e:00:00:00 && "
    "ping -c 1 -W 1 10.99.0.1";

void expectSoon(const std::string& script, const std::string& what) {
  EXPECT_TRUE(waitUntil([&] { return shell("( " + script + " ) >/dev/null 2>&1"); }))
      << what << ": " << script
      << ended("ip addr; ip route; tail /run/lab/networkd.pid.log").output;
}

TEST_F(RepairConsole, ChangesTheNetworkForGood) {
  inNamespaces([] {
    const NetworkLab lab;
    lab.StartNetworkd();
    lab.StartHostnamed();
    lab.Serve("dhcp4");
    LabConsole console(lab);
    ASSERT_TRUE(shell("halocli network restore"));
    expectSoon("true" + kReaches, "restored");
    console.LogIn();
    console.Do({"choose:Network Restore Options", "wait:Create Standard Switch"});
    for (const Repair& repair : kRepairs) {
      console.Do({"choose:" + repair.what});
      console.Do(Harness::parts(repair.steps));
      expectSoon(repair.after + kReaches, repair.what);
      lab.StartAfresh();
      expectSoon(repair.after + kReaches, repair.what + " after a restart");
    }
  });
}

}  // namespace
