// SPDX-License-Identifier: MIT
#include "sample/sample_host.h"

#include <gtest/gtest.h>
#include <syslog.h>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/platform.h"
#include "tarnctl/adv/advanced_option_impl.h"
#include "tarnctl/auth/smart_card_info_impl.h"
#include "tarnctl/network/network_info_impl.h"
#include "tarnctl/system/system_info_impl.h"
#include "tests/support/host_file.h"

namespace {

using Harness::DemoHost;
using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::platform;
using TestSupport::setIn;

class SampleHost : public testing::Test {
 protected:
  SampleHost() { HostSample::useSampleHost(host.Directory()); }
  DemoHost host;
};

TEST_F(SampleHost, ShowsTheBuiltInSampleThroughTheLibrary) {
  TarnCtl::System::SystemInfoImpl system;
  TarnCtl::System::HardwareInfoImpl hardware;
  TarnCtl::System::MemoryInfoImpl memory;
  EXPECT_EQ(system.GetVersion().productName, "Corvo Halo");
  EXPECT_EQ(system.GetVersion().buildNumber, 1840271u);
  EXPECT_EQ(hardware.GetBiosData().minorVersion, 19);
  EXPECT_EQ(TarnCtl::System::ProcessorInfoImpl().GetNumCpuPackages(), 2);
  EXPECT_EQ(memory.GetTotalPages() * memory.GetPageSize(), 128ULL << 30);
  EXPECT_EQ(system.GetModuleVersion("plsa"), "12.4.0.6");
  EXPECT_EQ(system.GetModuleVersion("none"), "");
  EXPECT_EQ(system.GetFirewallRulesets().front().id, "sshServer");

  TarnCtl::Network::DnsConfigImpl dns(HostCtl::Network::kDefaultStack);
  EXPECT_EQ(dns.GetHostname() + "." + dns.GetDomain(), "halo-01.example.test");
  EXPECT_EQ(toString(dns.GetNameServers().at(1)), "2001:db8:20::53");

  EXPECT_FALSE(TarnCtl::Authentication::SmartCardInfoImpl().GetAllSlots().at(0).token);
  using TarnCtl::Adv::AdvancedOptionImpl;
  const auto timeOut = AdvancedOptionImpl::FindOption("/UserVars/KivaTimeOut");
  EXPECT_EQ(dynamic_cast<HostCtl::Adv::AdvancedIntegerOption&>(*timeOut).GetValue(), 600);
  EXPECT_EQ(AdvancedOptionImpl::FindOption("/UserVars/None"), nullptr);
}

TEST_F(SampleHost, HasAManagementInterfaceWithEveryKindOfAddress) {
  using HostCtl::Network::AddressType;
  TarnCtl::Network::NetworkInfoImpl network;
  network.UpdateManagementInterface();
  const auto nic = network.GetManagementInterface();
  const auto config = nic->GetIpConfig();
  EXPECT_TRUE(config.GetIpv4UseDhcp() && nic->GetConfiguredIpConfig().GetIpv4UseDhcp());
  EXPECT_EQ(config.GetIpv4Address().GetStringAddress(), "10.20.30.40");
  std::vector<AddressType> kinds;
  for (const auto& one : config.GetIpv6Networks()) kinds.push_back(one.type);
  EXPECT_EQ(kinds, (std::vector{AddressType::Static, AddressType::Dhcp, AddressType::Autoconf}));

  std::vector<std::string> adapters;
  for (const auto& pnic : network.GetPnics())
    adapters.push_back(pnic.name + (pnic.linkUp ? " up " : " down ") + pnic.switchName);
  EXPECT_EQ(adapters, (std::vector<std::string>{"pnic0 up vSwitch0", "pnic1 up ",
                                                "pnic2 up vSwitch1", "pnic3 down "}));
}

TEST_F(SampleHost, RehearsesFaultsByOperation) {
  setIn(host, "/faults/GetPnics", "the adapters do not answer");
  TarnCtl::Network::NetworkInfoImpl network;
  EXPECT_NO_THROW(network.UpdateManagementInterface());
  try {
    network.GetPnics();
    FAIL() << "no exception";
  } catch (const HostCtlException& error) {
    EXPECT_STREQ(error.what(), "the adapters do not answer");
  }
}

TEST_F(SampleHost, JournalsWhatLeavesTheProgram) {
  platform().Log(LOG_INFO, "two\nlines");
  platform().Log(LOG_DEBUG, "dropped");
  platform().Log(LOG_USER | LOG_WARNING, "w");
  platform().Log(LOG_AUTH | LOG_ERR, "e");
  platform().Log(LOG_AUTH | LOG_EMERG, "m");
  platform().Log(LOG_LOCAL3 | LOG_NOTICE, "n");
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
      "log.auth.err\te",
      "log.auth.emerg\tm",
      "log.local3.notice\tn",
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
  const HostCtl::Lib::Program child = platform().ChildProgram({"/bin/sh", {"sh", "-c", "reboot"}});
  const HostCtl::Lib::Program expected = {
      KIVA_BINARY_DIR "/kiva-demo-tools",
      {"kiva-demo-tools", "--host", home, "/bin/sh", "sh", "-c", "reboot"}};
  EXPECT_EQ(child, expected);

  EXPECT_EQ(platform().EventInit(), 0);
  setIn(host, "/eventLibraryStatus", -3);
  EXPECT_EQ(platform().EventInit(), -3);
}

TEST_F(SampleHost, LeavesAPamDirectoryOfItsOwnerAlone) {
  const auto service = host.Directory() / "pam.d/kiva";
  EXPECT_TRUE(std::filesystem::remove(service));
  HostSample::useSampleHost(host.Directory());
  EXPECT_FALSE(std::filesystem::exists(service));
}

}  // namespace
