// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "linux/driver.h"
#include "linux/pnics.h"

namespace HostLinux {
namespace {

namespace fs = std::filesystem;
using HostCtl::Network::ConnecteeType;

// A machine made of files below a temporary folder.
class LinuxTree : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = testing::TempDir() + "linux_tree_XXXXXX";
    root_ = mkdtemp(pattern.data());
  }
  void TearDown() override { fs::remove_all(root_); }

  void Write(const std::string& path, const std::string& text) {
    fs::create_directories(fs::path(root_ + path).parent_path());
    std::ofstream(root_ + path) << text;
  }
  void Link(const std::string& path, const std::string& target) {
    fs::create_directories(fs::path(root_ + path).parent_path());
    fs::create_symlink(target, root_ + path);
  }

  std::string root_;
};

TEST_F(LinuxTree, AnEmptyMachineKnowsNothingAndThrowsNothing) {
  LinuxDriver driver(root_);
  EXPECT_EQ(driver.ReadVersion().productName, "Linux");
  EXPECT_EQ(driver.ReadHardware().vendorName, "");
  EXPECT_EQ(driver.ReadProcessors().packages, 1);
  EXPECT_EQ(driver.ReadMemory().totalPages, 0u);
  EXPECT_TRUE(driver.ReadStorageAdapters().empty() && driver.ReadPnics().empty());
  EXPECT_FALSE(driver.ReadIpv6Enabled());
  EXPECT_EQ(driver.ReadDns().hostname + driver.ReadKeyboardLayout(), "");
  EXPECT_EQ(driver.ReadOption("/UserVars/KivaTimeOut"), std::nullopt);
  EXPECT_TRUE(driver.ReadKeyboardLayouts().empty() && driver.ReadFirewallRulesets().empty());
}

TEST_F(LinuxTree, HardwareWithoutTheFirmwaresFillers) {
  for (const auto& [name, text] :
       std::map<std::string, std::string>{{"sys_vendor", "Corvo Systems  \n"},
                                          {"product_name", "to be filled by O.E.M.\n"},
                                          {"product_serial", "SN-7\n"},
                                          {"chassis_serial", "Default string\n"},
                                          {"bios_version", "2.1\n"},
                                          {"bios_release", "5.17\n"},
                                          {"bios_date", "01/02/2024\n"},
                                          {"chassis_asset_tag", "A 7\n"}})
    Write("/sys/class/dmi/id/" + name, text);
  Write("/sys/class/ipmi/ipmi0/device/bmc/firmware_revision", "4.22\n");
  const auto record = LinuxDriver(root_).ReadHardware();
  EXPECT_EQ(record.vendorName, "Corvo Systems");
  EXPECT_EQ(record.productName, "");
  EXPECT_EQ(record.serialNumber, "SN-7");
  EXPECT_EQ(record.serviceTag, "");
  EXPECT_EQ(record.bmcVersion, "4.22");
  EXPECT_EQ(record.bios.assetTag, "A 7");
  EXPECT_EQ(record.bios.majorVersion, 5);
  EXPECT_EQ(record.bios.minorVersion, 17);
}

TEST_F(LinuxTree, StorageAdaptersAndModuleVersions) {
  Write("/sys/class/scsi_host/host10/proc_name", "ahci\n");
  Write("/sys/class/scsi_host/host2/proc_name", "megaraid_sas\n");
  for (const char* disk : {"sda", "vda", "nvme0n1", "nvme0n2", "loop0"})
    fs::create_directories(root_ + "/sys/block/" + disk);
  for (const char* device : {"scsi", "virtio", "nvme", "pci"})
    fs::create_directories(root_ + "/sys/devices/" + device);
  Link("/sys/block/sda/device", "../../devices/scsi");
  Link("/sys/block/vda/device", "../../devices/virtio");
  Link("/sys/block/nvme0n1/device", "../../devices/nvme");
  Link("/sys/block/nvme0n2/device", "../../devices/nvme");
  Link("/sys/devices/nvme/device", "../pci");
  Link("/sys/devices/scsi/driver", "/drivers/sd");
  Link("/sys/devices/virtio/driver", "/drivers/virtio_blk");
  Link("/sys/devices/pci/driver", "/drivers/nvme");
  Write("/sys/module/megaraid_sas/version", "07.719.03\n");
  LinuxDriver driver(root_);
  std::string adapters;
  for (const auto& [name, module] : driver.ReadStorageAdapters())
    adapters += name + "=" + module + " ";
  EXPECT_EQ(adapters, "phba0=megaraid_sas phba1=ahci phba2=nvme phba3=virtio_blk ");
  EXPECT_EQ(driver.ReadModuleVersion("megaraid-sas"), "07.719.03");
  EXPECT_EQ(driver.ReadModuleVersion("../module/megaraid_sas"), "");
}

TEST_F(LinuxTree, PhysicalNicsAndConnections) {
  const std::string net = "/sys/class/net/";
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
  Link(net + "vm7/master", "../../ovs-system");
  LinuxDriver driver(root_);
  const auto pnics = driver.ReadPnics();
  ASSERT_EQ(pnics.size(), 2u);
  EXPECT_EQ(pnics[0], (HostCtl::Network::Pnic{"pnic0", "eth2 (ixgbe, PCI 8086:10FB)", "ixgbe",
                                              "00:11:22:33:44:55", true, 10000, "br0"}));
  EXPECT_EQ(pnics[1].description, "eth10 (ixgbe, PCI 8086:10FB)");
  EXPECT_FALSE(pnics[1].linkUp);
  EXPECT_EQ(pnics[1].speed, 0);
  const Files files(root_);
  EXPECT_EQ(readConnection(files, "tarn0").type, ConnecteeType::StandardPortGroup);
  EXPECT_EQ(readConnection(files, "vm7").type, ConnecteeType::DistributedPort);
  EXPECT_EQ(readConnection(files, "eth2").type, ConnecteeType::Opaque);
}

TEST_F(LinuxTree, NamesAndResolver) {
  Write("/proc/sys/kernel/hostname", "localhost\n");
  Write("/etc/hostname", "node7.lab.example\n");
  Write("/etc/resolv.conf", "nameserver 127.0.0.53\nsearch stub.example\n");
  LinuxDriver driver(root_);
  EXPECT_EQ(driver.ReadDns().hostname, "node7");
  EXPECT_EQ(toString(driver.ReadDns().nameServers.at(0)), "127.0.0.53");
  Write("/run/systemd/resolve/resolv.conf", "nameserver 10.0.0.1\nnameserver 10.0.0.2\n");
  EXPECT_EQ(toString(driver.ReadDns().nameServers.at(1)), "10.0.0.2");
  Write("/proc/sys/kernel/hostname", "running\n");
  EXPECT_EQ(driver.ReadDns().hostname, "running");
  Write("/proc/sys/net/ipv6/conf/all/disable_ipv6", "0\n");
  EXPECT_TRUE(driver.ReadIpv6Enabled());
}

TEST_F(LinuxTree, SettingsAndKeyboard) {
  Write("/etc/corvo/options/UserVars/KivaTimeOut", "900\n");
  Write("/etc/corvo/boot-option", "1\n");
  Write("/etc/corvo/firewall/sshServer", "1\n");
  Write("/etc/corvo/firewall/ntpClient", "0\n");
  Write("/usr/share/keymaps/i386/qwerty/us.kmap.gz", "");
  Write("/usr/share/keymaps/i386/qwertz/de.kmap.gz", "");
  Write("/usr/share/keymaps/mac/us.kmap.gz", "");
  Write("/usr/share/keymaps/i386/include/compose.inc.gz", "");
  Write("/etc/vconsole.conf", "KEYMAP=fr\n");
  ASSERT_EQ(mkfifo((root_ + "/etc/corvo/welcome").c_str(), 0600), 0);
  LinuxDriver driver(root_);
  EXPECT_EQ(driver.ReadOption("/UserVars/KivaTimeOut"),
            HostCtl::Adv::OptionValue(std::int64_t{900}));
  EXPECT_EQ(driver.ReadBootOption(), 1);
  EXPECT_EQ(driver.ReadWelcomeMessage(), "");
  ASSERT_EQ(driver.ReadFirewallRulesets().size(), 2u);
  EXPECT_EQ(driver.ReadFirewallRulesets()[1].id, "sshServer");
  EXPECT_TRUE(driver.ReadFirewallRulesets()[1].enabled);
  EXPECT_EQ(driver.ReadKeyboardLayouts(), (std::vector<std::string>{"de", "us"}));
  EXPECT_EQ(driver.ReadKeyboardLayout(), "fr");
  Write("/etc/default/keyboard", "XKBLAYOUT=\"de,us\"\n");
  EXPECT_EQ(driver.ReadKeyboardLayout(), "de");
}

TEST_F(LinuxTree, ARepeatedAlertChangesNothing) {
  fs::create_directories(root_ + "/run");
  const auto alert = [&] { return Files(root_).Read("/run/corvo/alert").value_or("none"); };
  LinuxDriver driver(root_);
  driver.RaiseSystemAlert("No adapter.\nAt all.");
  EXPECT_EQ(alert(), "No adapter. At all.\n");
  Write("/run/corvo/alert", "Somebody else's\n");
  driver.RaiseSystemAlert("No adapter.\nAt all.");
  EXPECT_EQ(alert(), "Somebody else's\n");
  driver.RaiseSystemAlert("Another.");
  EXPECT_EQ(alert(), "Another.\n");
  LinuxDriver(root_ + "/nowhere").RaiseSystemAlert("No file for this one.");
}

}  // namespace
}  // namespace HostLinux
