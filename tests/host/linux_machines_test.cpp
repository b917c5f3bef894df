// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <libvirt/libvirt.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "hostctl/lib/descriptor.h"
#include "linux/loadable_module.h"
#include "linux/machines_module.h"
#include "linux/running_machines.h"
#include "linux/tools/machines.h"

using namespace HostLinux;

namespace {

using Names = std::vector<std::string>;

constexpr const char* kUri = "test:///default";
constexpr MachineTimes kShort{std::chrono::milliseconds(500), std::chrono::milliseconds(400)};

// Machines of libvirt's own test driver, which are there as long as this connection is.
class LinuxMachines : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(connection_);
    Set("URI=" + std::string(kUri) + "\nORDER=c 3, b, unknown\n");
    for (const char* name : {"a", "b", "c 3"}) Add(name, "destroy", true);
    Add("stays", "restart", true);
    Add("by hand", "destroy", false);
  }
  void Add(const std::string& name, const std::string& afterShutDown, bool autostart) {
    const std::string text = "<domain type='test'><name>" + name +
                             "</name><memory>1024</memory><os><type>hvm</type></os><on_poweroff>" +
                             afterShutDown + "</on_poweroff></domain>";
    const virDomainPtr machine = virDomainDefineXML(connection_, text.c_str());
    ASSERT_EQ(virDomainCreate(machine), 0);
    virDomainSetAutostart(machine, autostart);
    virDomainFree(machine);
  }
  void Set(const std::string& text) { folder_.Write("etc/corvo/virtualisation", text); }
  std::string How(const char* name) {
    const virDomainPtr machine = virDomainLookupByName(connection_, name);
    int state = 0, reason = 0;
    virDomainGetState(machine, &state, &reason, 0);
    virDomainFree(machine);
    if (state == VIR_DOMAIN_RUNNING) return "runs";
    return reason == VIR_DOMAIN_SHUTOFF_SHUTDOWN ? "went" : "destroyed";
  }
  void TearDown() override { virConnectClose(connection_); }

  const virConnectPtr connection_ = virConnectOpen(kUri);
  Harness::TemporaryFolder folder_;
  const Files files_{folder_.Path()};
};

TEST_F(LinuxMachines, AutostartedOnesAreAskedInTheirOrder) {
  Module module("kiva-machines");
  OpenedMachines opened;
  StoppedMachines stopped;
  module.Find<OpenMachinesFunction>(kOpenMachinesSymbol)(kUri, opened);
  const MachineStopRequest request{StopManner::AskInTurn, {"stays", "c 3", "b"}, kShort.shutDown};
  module.Find<StopMachinesFunction>(kStopMachinesSymbol)(opened.connection, request, stopped);
  EXPECT_EQ(stopped.stopped, (Names{"c 3", "b", "a"})) << "one that stays keeps nobody from going";
  EXPECT_EQ(stopped.left, Names{"stays"});
  EXPECT_EQ(How("a") + How("stays") + How("by hand"), "wentrunsruns");
}

TEST_F(LinuxMachines, AskedOnesMayStayAndDestroyedOnesMayNot) {
  const auto powerOff = [&](HostSeam::MachineStop how) { powerOffMachines(files_, how, kShort); };
  const std::string stays = "StopMachines stays: still running";
  EXPECT_EQ(failureOf([&] { stopManagedMachines(files_, kShort); }), stays);
  EXPECT_EQ(How("c 3") + How("by hand"), "wentruns");
  EXPECT_EQ(failureOf([&] { powerOff(HostSeam::MachineStop::Ask); }), stays);
  EXPECT_EQ(How("by hand") + How("stays"), "wentruns");
  powerOff(HostSeam::MachineStop::Terminate);
  EXPECT_EQ(How("stays"), "destroyed");
}

TEST_F(LinuxMachines, WithoutADaemonThereAreNoneAndOneThatHangsIsLeft) {
  sockaddr_un address{AF_UNIX, {}};
  (folder_.Path() / "socket").string().copy(address.sun_path, sizeof address.sun_path - 1);
  Set("URI=\"qemu+unix:///system?socket=" + std::string(address.sun_path) + "\"\n");
  const auto failure = [&] { return failureOf([&] { stopManagedMachines(files_, kShort); }); };
  const auto runs = [&] { return hasRunningMachines(files_, kShort.answer); };
  EXPECT_EQ(failure(), "");
  EXPECT_FALSE(runs());
  const HostCtl::Lib::Descriptor silent(socket(AF_UNIX, SOCK_STREAM, 0));
  ASSERT_EQ(bind(silent.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "Connection refused", failure());
  EXPECT_TRUE(runs());
  ASSERT_EQ(listen(silent.Get(), 5), 0);
  EXPECT_PRED_FORMAT2(testing::IsSubstring, "does not answer", failure());
  EXPECT_TRUE(runs()) << "nobody knows";
}

TEST_F(LinuxMachines, RunUntilTheLastIsOff) {
  EXPECT_TRUE(hasRunningMachines(files_));
  powerOffMachines(files_, HostSeam::MachineStop::Terminate, kShort);
  EXPECT_FALSE(hasRunningMachines(files_));
}

TEST_F(LinuxMachines, SettingsAreOneFile) {
  Set("# none\nORDER= web 1,,db , \nURI=\n");
  EXPECT_EQ(readMachineSettings(files_).uri, "qemu:///system");
  EXPECT_EQ(readMachineSettings(files_).order, (Names{"web 1", "db"}));
}

}  // namespace
