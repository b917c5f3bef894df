// SPDX-License-Identifier: MIT
#include "sample/sample_host.h"

#include <gtest/gtest.h>
#include <syslog.h>

#include "harness/demo_host.h"
#include "hostctl/lib/platform.h"
#include "tarnctl/adv/advanced_option_impl.h"
#include "tarnctl/auth/smart_card_info_impl.h"
#include "tarnctl/network/network_info_impl.h"
#include "tarnctl/system/system_info_impl.h"

namespace {

using Harness::DemoHost;
using HostCtl::Lib::platform;

class SampleHost : public testing::Test {
 protected:
  SampleHost() { HostSample::useSampleHost(host.Directory()); }
  DemoHost host;
};

TEST_F(SampleHost, ShowsTheBuiltInSampleThroughTheLibrary) {
  TarnCtl::System::SystemInfoImpl system;
  EXPECT_EQ(TarnCtl::System::HardwareInfoImpl().GetBiosData().minorVersion, 19);
  EXPECT_EQ(system.GetModuleVersion("plsa"), "12.4.0.6");
  EXPECT_EQ(system.GetModuleVersion("none"), "");
  EXPECT_EQ(system.GetFirewallRulesets().front().id, "sshServer");
  EXPECT_FALSE(TarnCtl::Authentication::SmartCardInfoImpl().GetAllSlots().at(0).token);
  using TarnCtl::Adv::AdvancedOptionImpl;
  const auto timeOut = AdvancedOptionImpl::FindOption("/UserVars/KivaTimeOut");
  EXPECT_EQ(dynamic_cast<HostCtl::Adv::AdvancedIntegerOption&>(*timeOut).GetValue(), 600);
  EXPECT_EQ(AdvancedOptionImpl::FindOption("/UserVars/None"), nullptr);

  TarnCtl::Network::NetworkInfoImpl network;
  network.UpdateManagementInterface();
  EXPECT_TRUE(network.GetManagementInterface()->GetConfiguredIpConfig().GetIpv4UseDhcp());
  std::string adapters;
  for (const auto& pnic : network.GetPnics())
    adapters += pnic.name + (pnic.linkUp ? " up " : " down ") + pnic.switchName + "|";
  EXPECT_EQ(adapters, "pnic0 up vSwitch0|pnic1 up |pnic2 up vSwitch1|pnic3 down |");
}

TEST_F(SampleHost, JournalsWhatLeavesTheProgram) {
  platform().Log(LOG_INFO, "two\nlines");
  platform().Log(LOG_DEBUG, "dropped");
  platform().Log(LOG_USER | LOG_WARNING, "w");
  platform().Log(LOG_AUTH | LOG_EMERG, "m");
  platform().Log((12 << 3) | LOG_CRIT, "c");
  platform().EventAdd("@&!*@*@(id)text");
  platform().Audit({"login.connect", "root", false, {{"reason", "Invalid Login"}, {"n", "1"}}});
  platform().ChildProgram({"/bin/hmx-cmd", {"hmx-cmd", "-U", "kiva"}});
  platform().TerminalProgram({"/bin/less", {"less", "-cfP", "a b"}});
  TarnCtl::System::SystemInfoImpl system;
  for (const char* alert : {"No adapter.", "No adapter.", "Other."}) system.SetSystemAlert(alert);
  const std::vector<std::string> expected = {
      "log.info\ttwo\\nlines",
      "log.warning\tw",
      "log.auth.emerg\tm",
      "log.12.crit\tc",
      "event\t@&!*@*@(id)text",
      "audit\tlogin.connect root 0 reason=Invalid Login n=1",
      "run\t/bin/hmx-cmd hmx-cmd -U kiva",
      "run\t/bin/less less -cfP a b",
      "hostctl\tSetSystemAlert No adapter.",
      "hostctl\tSetSystemAlert Other.",
  };
  EXPECT_EQ(host.Journal(), expected);
}

TEST_F(SampleHost, KeepsFilesAndChildrenToItself) {
  const std::string home = host.Directory();
  EXPECT_EQ(platform().HostPath("/dev/console"), home + "/root/dev/console");
  EXPECT_EQ(platform().PamServiceDirectory(), home + "/pam.d");
  const HostCtl::Lib::Program expected = {
      KIVA_BINARY_DIR "/kiva-demo-tools",
      {"kiva-demo-tools", "--host", home, "/bin/sh", "sh", "-c", "reboot"}};
  EXPECT_EQ(platform().ChildProgram({"/bin/sh", {"sh", "-c", "reboot"}}), expected);
  EXPECT_EQ(platform().EventInit(), 0);
  host.Set("/eventLibraryStatus", -3);
  EXPECT_EQ(platform().EventInit(), -3);
}

TEST_F(SampleHost, LeavesAPamDirectoryOfItsOwnerAlone) {
  const auto service = host.Directory() / "pam.d/kiva";
  EXPECT_TRUE(std::filesystem::remove(service));
  HostSample::useSampleHost(host.Directory());
  EXPECT_FALSE(std::filesystem::exists(service));
}

}  // namespace
