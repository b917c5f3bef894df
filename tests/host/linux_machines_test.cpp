// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <libvirt/libvirt.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <memory>

#include "harness/temporary_folder.h"
#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"
#include "linux/loadable_module.h"
#include "linux/tools/machine_stop.h"
#include "linux/tools/machines.h"

using namespace HostLinux;

namespace {

using HostCtl::Lib::HostCtlException;
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
    const virDomainPtr machine = virDomainDefineXML(connection_.get(), text.c_str());
    ASSERT_EQ(virDomainCreate(machine), 0);
    virDomainSetAutostart(machine, autostart);
    virDomainFree(machine);
  }
  void Set(const std::string& text) { folder_.Write("etc/corvo/virtualisation", text); }
  std::string How(const char* name) {
    const virDomainPtr machine = virDomainLookupByName(connection_.get(), name);
    int state = 0, reason = 0;
    virDomainGetState(machine, &state, &reason, 0);
    virDomainFree(machine);
    if (state == VIR_DOMAIN_RUNNING) return "runs";
    return reason == VIR_DOMAIN_SHUTOFF_SHUTDOWN ? "went" : "destroyed";
  }
  template <class Action>
  static std::string Failure(Action action) {
    try {
      action();
    } catch (const HostCtlException& error) {
      return error.what();
    }
    return "";
  }

  struct Close {
    void operator()(virConnectPtr connection) const { virConnectClose(connection); }
  };
  const std::unique_ptr<virConnect, Close> connection_{virConnectOpen(kUri)};
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
  EXPECT_EQ(Failure([&] { stopManagedMachines(files_, kShort); }),
            "StopMachines stays: still running");
  EXPECT_EQ(How("c 3") + How("by hand"), "wentruns");
  EXPECT_EQ(Failure([&] { powerOffMachines(files_, HostSeam::MachineStop::Ask, kShort); }),
            "StopMachines stays: still running");
  EXPECT_EQ(How("by hand") + How("stays"), "wentruns");
  powerOffMachines(files_, HostSeam::MachineStop::Terminate, kShort);
  EXPECT_EQ(How("stays"), "destroyed");
}

TEST_F(LinuxMachines, WithoutADaemonThereAreNone) {
  const std::string socket = folder_.Path() / "socket";
  Set("URI=\"qemu+unix:///system?socket=" + socket + "\"\n");
  stopManagedMachines(files_, kShort);
  const HostCtl::Lib::Descriptor silent(::socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  socket.copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(silent.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  const auto stop = [&] { stopManagedMachines(files_, kShort); };
  EXPECT_NE(Failure(stop).find("Connection refused"), std::string::npos) << Failure(stop);
  ASSERT_EQ(listen(silent.Get(), 5), 0);
  EXPECT_NE(Failure(stop).find("does not answer"), std::string::npos) << Failure(stop);
}

TEST(LinuxMachineSettings, AreReadFromOneFile) {
  const Harness::TemporaryFolder folder;
  const Files files(folder.Path());
  EXPECT_EQ(readMachineSettings(files).uri, "qemu:///system");
  folder.Write("etc/corvo/virtualisation", "# none\nORDER= web 1,,db , \nURI=\n");
  EXPECT_EQ(readMachineSettings(files).uri, "qemu:///system");
  EXPECT_EQ(readMachineSettings(files).order, (Names{"web 1", "db"}));
}

}  // namespace
