// SPDX-License-Identifier: MIT
#include "linux/hardware.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "linux/text.h"

namespace HostLinux {

namespace {

constexpr const char* kFillers[] = {"To Be Filled By O.E.M.",
                                    "Default string",
                                    "System manufacturer",
                                    "System Product Name",
                                    "System Serial Number",
                                    "System Version",
                                    "Chassis Serial Number",
                                    "Asset Tag",
                                    "No Asset Tag",
                                    "Not Specified",
                                    "Not Applicable",
                                    "Not Available",
                                    "None",
                                    "N/A",
                                    "NA",
                                    "Unknown",
                                    "Empty",
                                    "INVALID",
                                    "OEM",
                                    "O.E.M.",
                                    "0",
                                    "0123456789",
                                    "123456789",
                                    "Asset-1234567890"};

std::string dmi(const Files& files, const char* name) {
  std::string text = files.ReadLine(std::string("/sys/class/dmi/id/") + name);
  const auto isText = [&](const char* filler) { return equalIgnoringCase(text, filler); };
  return std::any_of(std::begin(kFillers), std::end(kFillers), isText) ? std::string() : text;
}

HostCtl::System::BiosData readBios(const Files& files) {
  HostCtl::System::BiosData bios;
  bios.vendor = dmi(files, "bios_vendor");
  bios.version = dmi(files, "bios_version");
  bios.releaseDate = dmi(files, "bios_date");
  bios.assetTag = dmi(files, "chassis_asset_tag");
  const std::string release = dmi(files, "bios_release");
  const std::string_view text = release;
  if (const auto dot = text.find('.'); dot != std::string_view::npos) {
    bios.majorVersion = static_cast<int>(parseInteger(text.substr(0, dot)).value_or(0));
    bios.minorVersion = static_cast<int>(parseInteger(text.substr(dot + 1)).value_or(0));
  }
  return bios;
}

std::string readBmcVersion(const Files& files) {
  for (const auto& device : files.List("/sys/class/ipmi")) {
    std::string version =
        files.ReadLine("/sys/class/ipmi/" + device + "/device/bmc/firmware_revision");
    if (!version.empty()) return version;
  }
  return {};
}

// The driver of the nearest device above a block device that has one: a disk's own on virtio, the
// controller's on NVMe.
struct Controller {
  std::string device, driver;
};

Controller controllerOf(const Files& files, const std::string& block) {
  std::string device = "/sys/block/" + block;
  for (int level = 0; level < 2; ++level) {
    device += "/device";
    if (std::string driver = files.LinkName(device + "/driver"); !driver.empty())
      return {files.RealPath(device), std::move(driver)};
  }
  return {};
}

bool isScsiDisk(const Controller& controller) {
  return controller.driver == "sd" || controller.driver == "sr" || controller.driver == "st";
}

std::vector<std::string> adapterDrivers(const Files& files) {
  std::vector<std::string> drivers;
  for (const auto& host : files.List("/sys/class/scsi_host"))
    drivers.push_back(files.ReadLine("/sys/class/scsi_host/" + host + "/proc_name"));
  std::set<std::string> seen;
  for (const auto& block : files.List("/sys/block")) {
    const Controller controller = controllerOf(files, block);
    if (controller.driver.empty() || isScsiDisk(controller)) continue;
    if (seen.insert(controller.device).second) drivers.push_back(controller.driver);
  }
  return drivers;
}

}  // namespace

HostCtl::System::HardwareRecord readHardware(const Files& files) {
  HostCtl::System::HardwareRecord record;
  record.vendorName = dmi(files, "sys_vendor");
  record.productName = dmi(files, "product_name");
  record.serialNumber = dmi(files, "product_serial");
  record.serviceTag = dmi(files, "chassis_serial");
  record.bmcVersion = readBmcVersion(files);
  record.bios = readBios(files);
  return record;
}

std::vector<HostCtl::System::StorageAdapter> readStorageAdapters(const Files& files) {
  std::vector<HostCtl::System::StorageAdapter> adapters;
  for (auto& driver : adapterDrivers(files))
    adapters.push_back({"phba" + std::to_string(adapters.size()), std::move(driver)});
  return adapters;
}

std::string readModuleVersion(const Files& files, std::string module) {
  std::replace(module.begin(), module.end(), '-', '_');
  if (module.empty() || module.find_first_of("/.") != std::string::npos) return {};
  return files.ReadLine("/sys/module/" + module + "/version");
}

}  // namespace HostLinux
