// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <limits>

#include "harness/temporary_folder.h"
#include "hostctl/lib/exception.h"
#include "linux/driver.h"
#include "linux/network/connections.h"
#include "linux/pnics.h"
#include "linux/user_accounts.h"

using namespace HostLinux;

namespace {

namespace fs = std::filesystem;
using HostCtl::Lib::HostCtlException;
using HostCtl::Network::ConnecteeType;
using HostCtl::Network::ConnectionPoint;

// A machine made of files below a temporary folder.
class LinuxTree : public testing::Test, protected Harness::TemporaryFolder {
 protected:
  const std::string root_ = Path();
  LinuxDriver driver_{root_};
};

TEST_F(LinuxTree, AnEmptyMachineKnowsNothingAndThrowsNothing) {
  EXPECT_EQ(driver_.ReadVersion().productName, "Linux");
  EXPECT_EQ(driver_.ReadProcessors().packages, 1);
  EXPECT_EQ(driver_.ReadMemory().totalPages, 0u);
  EXPECT_EQ(
      driver_.ReadHardware().vendorName + driver_.ReadDns().hostname + driver_.ReadKeyboardLayout(),
      "");
  EXPECT_FALSE(driver_.ReadIpv6Enabled() || driver_.ReadOption("/UserVars/KivaTimeOut"));
  EXPECT_TRUE(driver_.ReadStorageAdapters().empty() && driver_.ReadPnics().empty() &&
              driver_.ReadKeyboardLayouts().empty() && driver_.ReadFirewallRulesets().empty());
}

TEST_F(LinuxTree, HardwareWithoutTheFirmwaresFillers) {
  const std::map<std::string, std::string> identity = {
      {"sys_vendor", "Corvo Systems  \n"}, {"product_name", "to be filled by O.E.M.\n"},
      {"product_serial", "SN-7\n"},        {"chassis_serial", "Default string\n"},
      {"bios_release", "5.17\n"},          {"chassis_asset_tag", "A 7\n"}};
  for (const auto& [name, text] : identity) Write("/sys/class/dmi/id/" + name, text);
  Write("/sys/class/ipmi/ipmi0/device/bmc/firmware_revision", "4.22\n");
  const auto record = driver_.ReadHardware();
  EXPECT_EQ(record.vendorName + "|" + record.productName + "|" + record.serialNumber + "|" +
                record.serviceTag + "|" + record.bmcVersion + "|" + record.bios.assetTag + "|" +
                std::to_string(record.bios.majorVersion * 100 + record.bios.minorVersion),
            "Corvo Systems||SN-7||4.22|A 7|517");
}

TEST_F(LinuxTree, StorageAdaptersAndModuleVersions) {
  Write("/sys/class/scsi_host/host10/proc_name", "ahci\n");
  Write("/sys/class/scsi_host/host2/proc_name", "megaraid_sas\n");
  Write("/sys/block/loop0/size", "0\n");
  for (const auto& [disk, device] :
       {std::pair{"sda", "scsi"}, {"vda", "virtio"}, {"nvme0n1", "nvme"}, {"nvme0n2", "nvme"}})
    Link(std::string("/sys/block/") + disk + "/device", std::string("../../devices/") + device);
  Link("/sys/devices/nvme/device", "../pci");
  Link("/sys/devices/scsi/driver", "/drivers/sd");
  Link("/sys/devices/virtio/driver", "/drivers/virtio_blk");
  Link("/sys/devices/pci/driver", "/drivers/nvme");
  Write("/sys/module/megaraid_sas/version", "07.719.03\n");
  std::string adapters;
  for (const auto& [name, module] : driver_.ReadStorageAdapters())
    adapters += name + "=" + module + " ";
  EXPECT_EQ(adapters, "phba0=megaraid_sas phba1=ahci phba2=nvme phba3=virtio_blk ");
  EXPECT_EQ(driver_.ReadModuleVersion("megaraid-sas"), "07.719.03");
  EXPECT_EQ(driver_.ReadModuleVersion("../module/megaraid_sas"), "");
}

TEST_F(LinuxTree, PhysicalNicsAndConnections) {
  const std::string net = "/sys/class/net/";
  fs::create_directory(root_ + "/run");
  for (const char* name : {"eth10", "eth2"}) {
    Write(net + name + "/device/uevent", "DRIVER=ixgbe\nPCI_ID=8086:10FB\n");
    Link(net + name + "/device/driver", "/drivers/ixgbe");
    Write(net + name + "/address", "00:11:22:33:44:55\n");
    Write(net + name + "/speed", "10000\n");
  }
  Write(net + "eth2/carrier", "1\n");
  Write(net + "eth10/carrier", "0\n");
  Write(net + "br0/carrier", "1\n");
  Link(net + "eth2/master", "../br0");
  Write(net + "ovs-system/type", "1\n");
  Link(net + "vm7/master", "../ovs-system");
  const std::vector<HostCtl::Network::PnicRecord> expected = {
      {"pnic0", "eth2 (ixgbe, PCI 8086:10FB)", "ixgbe", "00:11:22:33:44:55", true, 10000, "br0"},
      {"pnic1", "eth10 (ixgbe, PCI 8086:10FB)", "ixgbe", "00:11:22:33:44:55", false, 0, ""}};
  EXPECT_EQ(driver_.ReadPnics(), expected);
  const auto called = [](LinuxDriver& program) {
    std::string text;
    for (const auto& pnic : program.ReadPnics())
      text += pnic.name + "=" + pnic.description.substr(0, pnic.description.find(' ')) + " ";
    return text;
  };
  fs::rename(root_ + net + "eth2/device", root_ + "/unplugged");
  Write(net + "eth0/device/uevent", "");
  LinuxDriver tool(root_ + "/.");
  EXPECT_EQ(called(tool), "pnic1=eth10 pnic2=eth0 ") << "a name never means another adapter";
  EXPECT_EQ(called(driver_), called(tool));
  fs::rename(root_ + "/unplugged", root_ + net + "eth2/device");
  fs::remove(root_ + "/run/kiva-adapters");
  for (LinuxDriver* program : {&driver_, &tool})
    EXPECT_EQ(called(*program), "pnic0=eth2 pnic1=eth10 pnic2=eth0 ");
  const Files files(root_);
  const Switches ours{{"vSwitch0", {}, {{"Group", 0}}, {{"tarn0", "Group"}}}};
  const OvsInterfaces known{{"vm7", ""}, {"eth9", "dvs0"}};
  const std::tuple<const char*, std::optional<OvsInterfaces>, ConnectionPoint> cases[] = {
      {"tarn0", known, {ConnecteeType::StandardPortGroup, "vSwitch0", "Group"}},
      {"tarn1", known, {ConnecteeType::Opaque, "", ""}},
      {"eth9", known, {ConnecteeType::DistributedPort, "dvs0", ""}},
      {"vm7", known, {ConnecteeType::Opaque, "", ""}},
      {"vm7", std::nullopt, {ConnecteeType::DistributedPort, "", ""}},
      {"eth2", std::nullopt, {ConnecteeType::Opaque, "", ""}}};
  for (const auto& [name, ovs, connection] : cases)
    EXPECT_EQ(connectionOf(name, ours, ovs, files), connection) << name;
}

TEST_F(LinuxTree, NamesAndResolver) {
  Write("/proc/sys/kernel/hostname", "localhost\n");
  Write("/etc/hostname", "node7.lab.example\n");
  Write("/etc/resolv.conf", "nameserver 127.0.0.53\nsearch stub.example\n");
  EXPECT_EQ(driver_.ReadDns().hostname, "node7");
  EXPECT_EQ(toString(driver_.ReadDns().nameServers.at(0)), "127.0.0.53");
  Write("/run/systemd/resolve/resolv.conf", "nameserver 10.0.0.1\nnameserver 10.0.0.2\n");
  EXPECT_EQ(toString(driver_.ReadDns().nameServers.at(1)), "10.0.0.2");
  Write("/proc/sys/kernel/hostname", "running\n");
  EXPECT_EQ(driver_.ReadDns().hostname, "running");
  Write("/proc/sys/net/ipv6/conf/all/disable_ipv6", "0\n");
  EXPECT_TRUE(driver_.ReadIpv6Enabled());
}

TEST_F(LinuxTree, SettingsAndKeyboard) {
  Write("/etc/corvo/boot-option", "1\n");
  Write("/etc/corvo/firewall/sshServer", "1\n");
  Write("/etc/corvo/firewall/ntpClient", "0\n");
  for (const char* map : {"i386/qwerty/us.kmap.gz", "i386/qwertz/de.kmap.gz", "xkb/uk.map",
                          "mac/mac-us.kmap.gz", "i386/include/compose.kmap", "i386/qwerty/-C.kmap",
                          "i386/qwerty/a;b.kmap.gz", "x y/c.kmap", "i386/qwerty/euro.inc.gz"})
    Write(std::string("/usr/share/keymaps/") + map, "");
  ASSERT_EQ(mkfifo((root_ + "/etc/corvo/welcome").c_str(), 0600), 0);
  EXPECT_EQ(driver_.ReadBootOption(), 1);
  EXPECT_EQ(driver_.ReadWelcomeMessage(), "") << "nobody waits for a pipe";
  std::string rulesets;
  for (const auto& one : driver_.ReadFirewallRulesets())
    rulesets += one.id + (one.enabled ? " on " : " off ");
  EXPECT_EQ(rulesets, "ntpClient off sshServer on ");
  EXPECT_EQ(driver_.ReadKeyboardLayouts(), (std::vector<std::string>{"de", "uk", "us"}));
  Write("/etc/default/keyboard", "XKBLAYOUT=\"fr,us\"\n");
  EXPECT_EQ(driver_.ReadKeyboardLayout(), "fr");
  const std::string kept = "# KEYMAP=none\nFONT=Lat2\nKEYMAP_TOGGLE=us\n";
  const std::pair<std::string, std::string> consoles[] = {
      {"", "KEYMAP=de\n"},
      {kept, kept + "KEYMAP=de\n"},
      {"KEYMAP=\"cz\"\n" + kept + " KEYMAP = 'us'", "KEYMAP=de\n" + kept}};
  for (const auto& [before, after] : consoles) {
    Write("/etc/vconsole.conf", before);
    driver_.WriteKeyboardLayout("de");
    EXPECT_EQ(Files(root_).Read("/etc/vconsole.conf"), after);
    EXPECT_EQ(driver_.ReadKeyboardLayout(), "de");
  }
  for (const char* layout : {"none", "", "-C", "../qwertz/de", "compose"}) {
    EXPECT_THROW(driver_.WriteKeyboardLayout(layout), HostCtl::Lib::HostCtlException) << layout;
    EXPECT_THROW(driver_.LoadKeyboardMappings(layout), HostCtl::Lib::HostCtlException) << layout;
  }
}

TEST_F(LinuxTree, OptionsComeBackAsTheyWereWritten) {
  using Value = HostCtl::Adv::OptionValue;
  for (const Value& value : std::initializer_list<Value>{
           std::int64_t{-5}, std::numeric_limits<std::int64_t>::max(), "", "12", "  both ends\t",
           "a\"b", "\"", "\"quoted\"", "'", std::string("nul\0", 4)}) {
    driver_.WriteOption("/UserVars/One", value);
    EXPECT_EQ(driver_.ReadOption("/UserVars/One"), value);
  }
  const Value kept = std::int64_t{7};
  driver_.WriteOption("/UserVars/One", kept);
  EXPECT_THROW(driver_.WriteOption("/UserVars/One", "two\nlines"), HostCtlException);
  for (const char* path : {"/../boot-option", "/UserVars", "/UserVars/One/Two"})
    EXPECT_THROW(driver_.WriteOption(path, kept), HostCtlException) << path;
  EXPECT_EQ(driver_.ReadOption("/UserVars/One"), kept);
  EXPECT_EQ(Files(root_).List("/etc/corvo/options/UserVars"), std::vector<std::string>{"One"});
}

TEST_F(LinuxTree, RulesetsFeaturesAndStoredAccounts) {
  Write("/etc/corvo/firewall/sshServer", "0\n");
  driver_.WriteFirewallRuleset("sshServer", true);
  EXPECT_EQ(Files(root_).Read("/etc/corvo/firewall/sshServer"), "1\n");
  for (const char* id : {"ntpClient", "", ".", "../boot-option"})
    EXPECT_THROW(driver_.WriteFirewallRuleset(id, true), HostCtlException) << id;
  constexpr auto kStore = HostCtl::System::Feature::UserAccountsInConfigStore;
  EXPECT_FALSE(driver_.ReadFeature(kStore));
  Write("/etc/corvo/features/UserAccountsInConfigStore", "1\n");
  EXPECT_TRUE(driver_.ReadFeature(kStore));
  EXPECT_THROW(driver_.StoreUserAccounts(), HostCtlException) << "no accounts to read";
  Write("/etc/shadow", "root:$y$j9T$a:1::::::\nbin:*:1\nold:!$6$b:1\nguest::1\nx\nanna:$6$c:1\n");
  driver_.StoreUserAccounts();
  EXPECT_EQ(Files(root_).Read(kStoredAccounts), "root:$y$j9T$a:1::::::\nanna:$6$c:1\n");
  EXPECT_EQ(fs::status(root_ + kStoredAccounts).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(LinuxTree, AnAlertIsOneLine) {
  for (const char* alert : {"Another.", "No adapter.\nAt all."}) driver_.RaiseSystemAlert(alert);
  EXPECT_EQ(Files(root_).Read("/run/corvo/alert"), "No adapter. At all.\n");
  LinuxDriver("/proc/nowhere").RaiseSystemAlert("No file for this one.");
}

}  // namespace
