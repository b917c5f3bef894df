// SPDX-License-Identifier: MIT
#include "linux/pnics.h"

#include <algorithm>
#include <filesystem>

#include "linux/adapter_numbers.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Network::PnicRecord;

namespace {

const std::string kClass = "/sys/class/net/";

// "eth0 (virtio_net, PCI 1AF4:1000)"; the identifier stands one device up for virtio.
std::string description(const Files& files, const std::string& name, const std::string& driver) {
  std::string pci;
  for (const char* level : {"/device/uevent", "/device/../uevent"}) {
    if (!pci.empty()) break;
    pci = valueOf(parseAssignments(files.Read(kClass + name + level).value_or("")), "PCI_ID");
  }
  std::string details = driver;
  if (!pci.empty()) details += (details.empty() ? "PCI " : ", PCI ") + pci;
  return details.empty() ? name : name + " (" + details + ")";
}

int speed(const Files& files, const std::string& name) {
  const auto megabits = parseInteger(files.ReadLine(kClass + name + "/speed")).value_or(0);
  return static_cast<int>(std::clamp<std::int64_t>(megabits, 0, 10'000'000));
}

PnicRecord readPnic(const Files& files, const std::string& name) {
  PnicRecord pnic;
  pnic.driver = files.LinkName(kClass + name + "/device/driver");
  pnic.description = description(files, name, pnic.driver);
  pnic.macAddress = files.ReadLine(kClass + name + "/address");
  pnic.linkUp = files.ReadLine(kClass + name + "/carrier") == "1";
  pnic.speed = pnic.linkUp ? speed(files, name) : 0;
  pnic.switchName = masterOf(files, name);
  return pnic;
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

std::string masterOf(const Files& files, const std::string& name) {
  return std::filesystem::path(files.RealPath(kClass + name + "/master")).filename();
}

std::vector<PhysicalNic> physicalNics(const Files& files) {
  auto present = files.List("/sys/class/net");
  std::erase_if(present, [&](const auto& nic) { return !files.Exists(kClass + nic + "/device"); });
  std::vector<PhysicalNic> nics;
  std::size_t number = 0;
  for (const auto& nic : numberedAdapters(files, present)) {
    const std::string pnic = "pnic" + std::to_string(number++);
    if (contains(present, nic)) nics.push_back({pnic, nic});
  }
  return nics;
}

std::string pnicNamed(const std::vector<PhysicalNic>& nics, const std::string& kernel) {
  for (const auto& nic : nics)
    if (nic.kernel == kernel) return nic.pnic;
  return kernel;
}

std::string kernelNamed(const std::vector<PhysicalNic>& nics, const std::string& pnic) {
  for (const auto& nic : nics)
    if (nic.pnic == pnic) return nic.kernel;
  return {};
}

std::vector<PnicRecord> readPnics(const Files& files) {
  std::vector<PnicRecord> pnics;
  for (const auto& nic : physicalNics(files)) {
    pnics.push_back(readPnic(files, nic.kernel));
    pnics.back().name = nic.pnic;
  }
  return pnics;
}

}  // namespace HostLinux
