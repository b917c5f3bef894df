// SPDX-License-Identifier: MIT
// What takes a whole machine: VLANs and bonds, cables that are pulled, and what a restart leaves.
#include "harness/vm/installed_machine.h"

namespace {

class VmNetwork : public InstalledMachine {
 protected:
  void SetUp() override {
    InstalledMachine::SetUp();
    for (int i = 1; i <= 3; ++i)
      nics_.push_back(
          Shell("basename $(dirname $(grep -l " + macOf(i) + " /sys/class/net/*/address))"));
  }
  static std::string macOf(int nic) { return "52:54:00:00:00:0" + std::to_string(nic); }

  /// Puts the third NIC of the hub into a network of its own: the peer, which knows VLAN 20 only.
  void StartPeer() {
    const std::string& nic = nics_[2];
    Shell("ip netns add peer && ip link set " + nic + " netns peer && ip -n peer link set " + nic +
          " up && ip -n peer link add link " + nic +
          " name vlan20 type vlan id 20 && ip -n peer addr add 10.20.0.1/24 dev vlan20 &&"
          " ip -n peer link set vlan20 up");
  }
  using Steps = std::vector<std::string>;
  static inline const Steps kRestart = {"wait:Apply changes and restart management network?",
                                        "type:y", "wait:System Customization"};
  static inline const Steps kSucceeded = {"wait:Operation Succeeded", "Enter",
                                          "gone:Operation Succeeded", "Esc"};
  static inline const Steps kReboot = {"wait:Apply changes and reboot host?", "type:y"};

  /// Takes steps in the network window and has them applied.
  void Change(const std::vector<Steps>& settings, const Steps& answer = kRestart) {
    machine_->Do({"choose:Configure Management Network", "wait:VLAN (optional)"});
    for (const Steps& steps : settings) machine_->Do(steps);
    machine_->Press("Esc");
    machine_->Do(answer);
  }
  /// Expects that the peer reaches an address, with the hardware address of that NIC of the hub.
  void ExpectSeen(const std::string& address, int nic) {
    WaitForSuccess("ip -n peer neigh flush all; ip netns exec peer ping -q -c 1 -W 1 " + address +
                   " >/dev/null && ip -n peer neigh show " + address + " | grep -q " + macOf(nic));
  }
  /// Joins the hub's first two NICs in the default network; its interface is in VLAN 20 then.
  void JoinUplinks() {
    Shell("halocli network restore");
    StartPeer();
    LogIn();
    // The adapter that carries the server's own address is left to it.
    Change({{"choose:Network Adapters", "wait:[X] pnic1", "focus:[ ] pnic2", "Space"},
            {"Enter", "choose:VLAN", "wait:VLAN ID", "type:20", "Enter"},
            {"choose:IPv4", "focus:Set static", "Space", "Down", "type:10.20.0.5", "Down"},
            {"type:255.255.255.0", "Down", "type:10.20.0.1", "Enter"}});
    ExpectBond(1);
  }
  /// Moves the management network onto a new switch, from the menu and back, at the second attempt:
  /// at the first one a file is in the way of the last step, and what `state` tells comes back.
  void MoveAtSecondAttempt(const std::string& nic, int seen, const std::string& state) {
    const std::string file = "/etc/systemd/network/10-kiva-" + nic + "-port.network";
    const std::string before = Shell("touch " + file + "; " + state);
    Shell("mount --bind " + file + " " + file);
    machine_->Do({"choose:Network Restore Options", "choose:Restore Standard Switch", "wait:<F11>",
                  "F11", "wait:Operation Failed"});
    EXPECT_TRUE(machine_->Look().Shows("Moving " + nic + " failed")) << machine_->Look().Dump();
    EXPECT_EQ(Shell(state), before);
    ExpectSeen("10.20.0.5", seen);
    Shell("umount " + file);
    machine_->Do({"Enter", "gone:Operation Failed", "F11"});
    machine_->Do(kSucceeded);
  }
  /// Expects the hub's first two NICs to be one uplink, the first their primary, the given one in
  /// use, and the management interface, with the hardware address of the NIC `seen`, in VLAN 20
  /// behind them.
  void ExpectBond(int active, int seen = 1) {
    WaitForSuccess("grep -q '^Primary Slave: " + nics_[0] +
                   " ' /proc/net/bonding/* && grep -q '^Currently Active Slave: " +
                   nics_[active - 1] + "$' /proc/net/bonding/*");
    ExpectSeen("10.20.0.5", seen);
  }
  /// Expects that interface and that bond on a switch that a repair made, and the same after
  /// networkd and then the whole machine have started afresh.
  void ExpectMovedForGood(const std::string& nic, const std::string& onto, int seen = 1) {
    const auto expectMoved = [&] {
      ExpectBond(1, seen);
      Shell("halocli network vswitch standard list | grep -x '" + onto +
            " *pnic1 pnic2 *Management Network0 *20 *pnic1 pnic2'");
      Shell("ip link show " + nic + "-port | grep 'master " + onto + " '");
      Shell("ip route get 10.99.0.1 | grep 'via 10.20.0.1 dev " + nic + " src 10.20.0.5'");
    };
    expectMoved();
    Shell("systemctl restart systemd-networkd");
    expectMoved();
    const std::string before = BootId();
    Shell("( sleep 1; systemctl reboot ) &");
    WaitForNewStart(before);
    StartPeer();
    expectMoved();
  }

  std::vector<std::string> nics_;  ///< The kernel's names of the hub's NICs.
};

TEST_F(VmNetwork, JoinsUplinksInAVlan) {
  JoinUplinks();
  machine_->Monitor("set_link nic1 off");
  ExpectBond(2);
  machine_->Monitor("set_link nic1 on");
  ExpectBond(1);

  const std::string before = BootId();
  Change({{"choose:IPv6", "wait:Disable IPv6", "Up", "Up", "Up", "Space", "Enter"}}, kReboot);
  WaitForNewStart(before);
  StartPeer();
  ExpectBond(1);
  Shell("! ip -6 addr show dev tarn0 | grep inet6");

  // A trunk hands on the frames of all VLANs as they are.
  LogIn();
  Change({{"choose:VLAN", "wait:VLAN ID", "type:4095", "Enter", "wait:Warning", "Enter"}});
  Shell(
      "ip link add link tarn0 name tagged type vlan id 20; ip addr add 10.20.0.6/24 dev tagged; "
      "ip link set tagged up");
  ExpectSeen("10.20.0.6", 1);
  Shell("ip link delete tagged");

  // Without the first uplink the second lends its address, and there is nothing to join.
  Change({{"choose:VLAN", "wait:VLAN ID", "type:20", "Enter"},
          {"Up", "Enter", "focus:[X] pnic1", "Space", "Enter"}});
  ExpectSeen("10.20.0.5", 2);
  Shell("! ls /proc/net/bonding/*");
}

// Whoever controls an Open vSwitch bridge decides on its ports and their VLANs.
TEST_F(VmNetwork, LeavesADistributedSwitchAlone) {
  Shell("systemctl start openvswitch-switch && ovs-vsctl add-br dvs0 && ovs-vsctl add-port dvs0 " +
        nics_[0] +
        " && ovs-vsctl add-port dvs0 mgmt0 -- set interface mgmt0 type=internal &&"
        " ovs-vsctl set-fail-mode dvs0 standalone && ovs-vsctl set-controller dvs0 tcp:127.0.0.1 &&"
        " ip addr add 10.9.0.5/24 dev mgmt0 && ip link set mgmt0 up &&"
        " ip route add default via 10.9.0.1 dev mgmt0");
  Shell("halocli network ip list | grep -x 'mgmt0 *Connection *- *distributed dvs0 *'");
  const std::string state =
      "ovs-vsctl show; ip -br addr show mgmt0; ip route get 10.99.0.1 | grep -o ^.*mgmt0";
  const std::string before = Shell(state);
  LogIn();
  Change({{"choose:Network Adapters", "focus:[ ] pnic2", "Space", "Enter"},
          {"choose:VLAN", "wait:VLAN ID", "type:20", "Enter"}});
  EXPECT_EQ(Shell(state), before);
}

TEST_F(VmNetwork, MovesABondInAVlanOntoANewSwitch) {
  JoinUplinks();
  // The address of a bond, 5a:54:..., is that of whichever uplink came first, and is never sent.
  MoveAtSecondAttempt("tarn0", 1,
                      "{ ip -br link; grep -r . /etc/systemd/network; } |"
                      " sed 's/5a:54:[^ ]*//' | sort");
  ExpectMovedForGood("tarn0", "vSwitch1");
  Shell("halocli network vswitch standard list | grep -x 'vSwitch0 *- *Management Network *20 *-'");
}

// Its own hardware address, addresses and routes are known to nobody but the kernel.
TEST_F(VmNetwork, RepairsAPortOfADistributedSwitchAndLeavesIt) {
  StartPeer();
  const std::string uplinks = nics_[0] + " " + nics_[1];
  Shell("systemctl enable --now openvswitch-switch && ovs-vsctl add-br dvs0 -- add-bond dvs0 up " +
        uplinks +
        " bond_mode=active-backup -- set-fail-mode dvs0 standalone"
        " -- add-port dvs0 mgmt0 tag=30 -- set interface mgmt0 type=internal"
        " -- set-controller dvs0 tcp:127.0.0.1 && for i in mgmt0 " +
        uplinks + "; do ip link set $i up; done && ip link set mgmt0 address " + macOf(9) +
        " && ip addr add 10.20.0.5/24 dev mgmt0 && ip route add default via 10.20.0.1");
  LogIn();
  machine_->Do({"choose:Network Restore Options", "choose:Restore xDS", "wait:VLAN ID", "type:20"});
  machine_->Press("Enter");
  machine_->Do(kSucceeded);
  ExpectSeen("10.20.0.5", 9);
  MoveAtSecondAttempt("mgmt0", 9,
                      "ovs-vsctl -f csv --columns=name,tag,bond_mode list port | sort;"
                      " ip -4 -br addr show mgmt0; ip route show dev mgmt0");
  EXPECT_EQ(Shell("ovs-vsctl list-ports dvs0"), "");
  ExpectMovedForGood("mgmt0", "vSwitch0", 9);
}

}  // namespace
